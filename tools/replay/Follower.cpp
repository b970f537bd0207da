#include "Follower.h"

namespace quillon {

std::string Follower::take(std::string_view bytes) {
    partial_ += bytes;
    std::size_t begin = 0;
    for (auto end = partial_.find('\n'); end != std::string::npos; end = partial_.find('\n', begin)) {
        reader_.line(std::string_view(partial_).substr(begin, end - begin));
        begin = end + 1;
    }
    partial_.erase(0, begin);
    for (const Entry& entry : reader_.take()) {
        traffic_.add(entry);
    }
    std::string text;
    for (; told_ < traffic_.settled(); ++told_) {
        text += rowText(traffic_, told_ + 1, true) + "\n";
    }
    traffic_.forget(told_);
    return text;
}

} // namespace quillon
