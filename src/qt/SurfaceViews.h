#pragma once

#include <string>
#include <tuple>

#include <QPixmap>

#include "qt/ControlView.h"

namespace quillon {

/// The background of the form, the console, the link control and the panels.
class SurfaceView : public ControlView {
public:
    using ControlView::ControlView;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A group box: an outline with the caption set into its upper edge.
class FrameView final : public ControlView {
public:
    using ControlView::ControlView;

    void reconsider() override;
    [[nodiscard]] std::optional<Words> words() const override;
    /// The names of rows: the note of a value, painted before the first control of its row.
    [[nodiscard]] std::vector<Words> notes() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QColor background() const;
    /// It frames the calibration value, which was changed and not stored.
    [[nodiscard]] bool unsaved() const;

    bool shownUnsaved_ = false;
};

/// A drawn picture on its background.
class PictureView final : public ControlView {
public:
    using ControlView::ControlView;

    void reconsider() override;
    /// Its note, at its upper edge.
    [[nodiscard]] std::optional<Words> words() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The beam belongs to the picture at rest only while there is radiation.
    [[nodiscard]] std::string artNow() const;

    QPixmap drawn_;
    std::tuple<std::string, QSize, QRgb> shown_; // what is drawn there
};

} // namespace quillon
