#pragma once

#include <QLocale>
#include <QString>

#include "console/RecordsTextTable.h"
#include "console/RecordsTexts.h"
#include "qt/Convert.h"

namespace quillon {

/// The window's words, and numbers as they are read beside them.
class Speech {
public:
    explicit Speech(RecordsTexts texts) : texts_(std::move(texts)) {}

    [[nodiscard]] QString operator()(RecordsTextName name) const { return toQtLines(texts_[name]); }
    /// With the parts in their places.
    template <typename... Parts>
    [[nodiscard]] QString with(RecordsTextName name, const Parts&... parts) const {
        QString text = (*this)(name);
        int number = 0;
        (text.replace(QLatin1Char('%') + QString::number(++number), parts), ...);
        return text;
    }
    [[nodiscard]] static QString size(qint64 bytes) {
        return bytes > 0 && bytes < kKilobyte
                   ? QLocale().toString(static_cast<double>(bytes) / kKilobyte, 'f', 1) +
                         QStringLiteral(" kB")
                   : QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
    }

private:
    static constexpr int kKilobyte = 1000;
    RecordsTexts texts_;
};

} // namespace quillon
