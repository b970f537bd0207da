#pragma once

#include <QProxyStyle>
#include <QSize>

namespace quillon {

/// Sizes on the panel that a window is shown on, for a finger of 9 mm and letters that go with it.
struct PanelSizes {
    explicit PanelSizes(QSize screen);

    int finger; ///< pixels
    int text;   ///< pixels of a letter's size
};

/// Keys and rows of a finger's size, in the console's look.
class FingerStyle final : public QProxyStyle {
public:
    explicit FingerStyle(const PanelSizes& sizes);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* data) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                         const QWidget* widget) const override;

private:
    PanelSizes sizes_;
};

/// From here on the application looks so.
void applyFingerStyle(const PanelSizes& sizes);

} // namespace quillon
