#pragma once

#include <memory>

#include <QDir>
#include <QSettings>

#include "runtime/Platform.h"

namespace quillon {

/// The per-user store in the platform's own place for settings.
class QtUserStore final : public UserStore {
public:
    explicit QtUserStore(std::unique_ptr<QSettings> settings) : settings_(std::move(settings)) {}

    [[nodiscard]] std::optional<std::string> read(std::string_view application, std::string_view section,
                                                  std::string_view key) const override;
    void write(std::string_view application, std::string_view section, std::string_view key,
               std::string_view value) override;
    void removeSection(std::string_view application, std::string_view section) override;

private:
    std::unique_ptr<QSettings> settings_;
};

/// A directory on the disk.
class DiskFolder final : public Folder {
public:
    explicit DiskFolder(const QString& path) : directory_(path) {}

    /// Where the program's small files lie: the variable QUILLON_HOME, or the directory of the executable.
    [[nodiscard]] static QString home();

    [[nodiscard]] std::optional<std::string> read(std::string_view name, std::size_t limit) const override;
    [[nodiscard]] std::unique_ptr<TextSink> create(std::string_view name) override;

private:
    QDir directory_;
};

} // namespace quillon
