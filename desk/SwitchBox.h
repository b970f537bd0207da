#pragma once

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>

#include "desk/KeyHold.h"
#include "desk/Look.h"
#include "desk/Station.h"

namespace desk {

/// The hand switch and the foot switch. The upper key of the hand switch is half pressed, the lower one
/// pressed through, and a finger may slide from one to the other. Space or Enter hold the key that is marked;
/// F5, F6 and F7 hold them from anywhere in the window. A screen reader's press stays until the next.
class SwitchBox final : public QGroupBox {
    Q_OBJECT

public:
    explicit SwitchBox(Station& station, QWidget* parent = nullptr);

    /// 0 let go, 1 half pressed, 2 pressed through.
    [[nodiscard]] int stage() const { return stage_; }
    [[nodiscard]] bool footDown() const { return footDown_; }
    /// Everything is let go.
    void letGo();
    /// Why the last press had no effect; empty when it had.
    [[nodiscard]] QString complaint() const { return complaint_->text(); }
    /// A key of the keyboard went down or up in the window; false: it is none of these.
    bool key(int key, bool down);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Place {
        int stage = 0;
        bool foot = false;
    };

    void build();
    [[nodiscard]] Place placeAt(QPoint global) const;
    void pointerDown(Place at);
    void put(Place at);
    void pointerMoved(Place at);
    void pointerUp();
    bool touched(QEvent* event);
    void settle();
    void obey(const std::string& command, bool press);

    Station& station_;
    QPushButton* prepare_;
    QPushButton* expose_;
    QPushButton* foot_;
    QCheckBox* stays_;
    News* complaint_;
    KeyHold keys_;
    Place pointer_; ///< what mouse or finger hold
    Place put_;     ///< what stays where it was put
    int stage_ = 0;
    bool footDown_ = false;
};

} // namespace desk
