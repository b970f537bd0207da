#include "desk/Tour.h"

#include <QPixmap>

namespace desk {

namespace {

constexpr int kLookMs = 100;

} // namespace

Tour::Tour(QWidget& window, const QString& directory) : window_(window), directory_(directory) {
    connect(&timer_, &QTimer::timeout, this, &Tour::look);
    timer_.start(kLookMs);
}

void Tour::look() {
    const QString ending = QStringLiteral("-desk.png");
    for (const QString& name : directory_.entryList({QStringLiteral("*.png")}, QDir::Files)) {
        if (!name.endsWith(ending) && taken_.insert(name).second) {
            window_.grab().save(directory_.filePath(name.chopped(4) + ending));
        }
    }
}

} // namespace desk
