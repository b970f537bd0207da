#pragma once

#include <string>
#include <vector>

#include "keeper/Keeper.h"

namespace quillon {

/// A folder of the system, made when it is missing. Files are this user's alone.
class PosixDisk final : public Disk {
public:
    /// With `replaces`, create() takes the place of a file that is there.
    explicit PosixDisk(std::string folder, bool replaces = false)
        : folder_(std::move(folder)), replaces_(replaces) {}
    ~PosixDisk() override;
    PosixDisk(const PosixDisk&) = delete;
    PosixDisk& operator=(const PosixDisk&) = delete;

    /// Why create() has failed, in the system's words.
    [[nodiscard]] std::string problem() const { return problem_; }

    [[nodiscard]] FileList files() override;
    [[nodiscard]] Created create(const std::string& name) override;
    [[nodiscard]] std::size_t write(std::string_view bytes) override;
    [[nodiscard]] bool full() const override { return full_; }
    [[nodiscard]] bool cut(std::size_t length) override;
    [[nodiscard]] bool sync() override;
    [[nodiscard]] bool seize(const std::vector<std::string>& names) override;
    [[nodiscard]] bool pack(const std::string& name) override;
    [[nodiscard]] bool remove(const std::string& name) override;
    [[nodiscard]] bool spoke(const std::string& name) override;

private:
    [[nodiscard]] std::string path(const std::string& name) const { return folder_ + "/" + name; }
    void syncFolder() const;
    void letGo();

    std::string folder_;
    bool replaces_;
    std::string problem_;
    int file_ = -1;
    bool full_ = false;
    std::vector<int> seized_;
};

} // namespace quillon
