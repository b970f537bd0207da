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

/// A directory on the disk that files are read from, and one that they are written to.
class DiskFolder final : public Folder {
public:
    explicit DiskFolder(const QString& path) : DiskFolder(path, path) {}
    DiskFolder(const QString& read, const QString& written) : directory_(read), written_(written) {}

    /// Where the program's small files lie: what QUILLON_HOME names; the directory of the executable, if the
    /// installation lies there or can be made there; the user's own folders.
    [[nodiscard]] static DiskFolder home();
    /// The same for an executable in `program`.
    [[nodiscard]] static DiskFolder homeOf(const QString& program);

    [[nodiscard]] QString readPath() const { return directory_.path(); }
    [[nodiscard]] QString writtenPath() const { return written_.path(); }

    [[nodiscard]] std::optional<std::string> read(std::string_view name, std::size_t limit) const override;
    /// A folder of the user's own is made when it is missing. A failure is told on standard error.
    [[nodiscard]] std::unique_ptr<TextSink> create(std::string_view name) override;
    void rename(std::string_view name, std::string_view newName) override;

private:
    QDir directory_;
    QDir written_;
};

} // namespace quillon
