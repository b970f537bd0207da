#include "qt/QtStores.h"

#include <QCoreApplication>
#include <QFile>

#include "qt/Convert.h"

namespace quillon {

namespace {

QString address(std::string_view application, std::string_view section) {
    const QString place = toQt(section);
    return application.empty() ? place : toQt(application) + QLatin1Char('/') + place;
}

/// Unbuffered: what was written is with the system when write() returns.
class FileSink final : public TextSink {
public:
    explicit FileSink(const QString& path) : file_(path) {}
    bool open() { return file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered); }

    bool write(std::string_view text) override {
        const auto size = static_cast<qint64>(text.size());
        return file_.write(text.data(), size) == size;
    }

private:
    QFile file_;
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

QString DiskFolder::home() {
    const QString home = qEnvironmentVariable("QUILLON_HOME");
    return home.isEmpty() ? QCoreApplication::applicationDirPath() : home;
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
    auto sink = std::make_unique<FileSink>(directory_.filePath(toQt(name)));
    return sink->open() ? std::move(sink) : nullptr;
}

} // namespace quillon
