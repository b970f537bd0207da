#pragma once

#include <string>

#include "Visit.h"

namespace quillon {

/// All facts as rows "kind,scope,name,found,left,from,to,note", in UTF-8, as tables take them in. The first
/// three name a value at every visit alike. Not translated.
[[nodiscard]] std::string csvOf(const Visit& visit);

} // namespace quillon
