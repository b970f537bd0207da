#include "qt/QtStores.h"

#include <cstdio>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include "qt/Convert.h"
#include "runtime/HomeFolders.h"

namespace quillon {

namespace {

QString address(std::string_view application, std::string_view section) {
    const QString place = toQt(section);
    return application.empty() ? place : toQt(application) + QLatin1Char('/') + place;
}

DiskFolder folderOf(const HomeFolders& home) {
    return {QString::fromStdU16String(home.read.u16string()),
            QString::fromStdU16String(home.written.u16string())};
}

/// Unbuffered: what was written is with the system when write() returns.
class FileSink final : public TextSink {
public:
    explicit FileSink(const QString& path) : file_(path) {}
    bool open() { return file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered); }

    [[nodiscard]] QString problem() const { return file_.errorString(); }

    bool write(std::string_view text) override {
        const auto size = static_cast<qint64>(text.size());
        if ((whole_ || file_.resize(end_)) && file_.write(text.data(), size) == size) {
            end_ += size;
            return whole_ = true;
        }
        whole_ = file_.resize(end_); // a full disk may have taken a part
        return false;
    }

private:
    QFile file_;
    qint64 end_ = 0;    ///< of what was written whole
    bool whole_ = true; ///< nothing stands behind it
};

} // namespace

std::optional<std::string> QtUserStore::read(std::string_view application, std::string_view section,
                                             std::string_view key) const {
    const QVariant value = settings_->value(address(application, section) + QLatin1Char('/') + toQt(key));
    return value.isValid() ? std::optional(fromQt(value.toString())) : std::nullopt;
}

void QtUserStore::write(std::string_view application, std::string_view section, std::string_view key,
                        std::string_view value) {
    settings_->setValue(address(application, section) + QLatin1Char('/') + toQt(key), toQt(value));
}

void QtUserStore::removeSection(std::string_view application, std::string_view section) {
    settings_->remove(address(application, section));
}

DiskFolder DiskFolder::home() {
    return folderOf(homeFolders(QCoreApplication::applicationDirPath().toStdU16String()));
}

DiskFolder DiskFolder::homeOf(const QString& program) {
    return folderOf(quillon::homeOf(program.toStdU16String()));
}

std::optional<std::string> DiskFolder::read(std::string_view name, std::size_t limit) const {
    QFile file(directory_.filePath(toQt(name).replace(QLatin1Char('\\'), QLatin1Char('/'))));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    // One byte more than allowed tells a file that is too large, even one that has no size of its own.
    const QByteArray content = file.read(static_cast<qint64>(limit) + 1);
    if (file.error() != QFileDevice::NoError || static_cast<std::size_t>(content.size()) > limit) {
        return std::nullopt;
    }
    return content.toStdString();
}

std::unique_ptr<TextSink> DiskFolder::create(std::string_view name) {
    const QString path = written_.filePath(toQt(name));
    if (written_ != directory_) {
        written_.mkpath(QStringLiteral("."));
    }
    auto sink = std::make_unique<FileSink>(path);
    if (sink->open()) {
        return sink;
    }
    std::fprintf(stderr, "quillon: %s cannot be written: %s\n", qUtf8Printable(path),
                 qUtf8Printable(sink->problem()));
    return nullptr;
}

void DiskFolder::rename(std::string_view name, std::string_view newName) {
    const QString to = written_.filePath(toQt(newName));
    QFile::remove(to);
    QFile::rename(written_.filePath(toQt(name)), to);
}

} // namespace quillon
