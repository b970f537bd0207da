#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include <QLabel>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include "ListPage.h"
#include "PlacePage.h"
#include "TextPage.h"
#include "TrafficPage.h"
#include "runtime/HomeFolders.h"
#include "tools/visit/ReportTexts.h"

namespace quillon {

/// The records: what sessions have left, to be saved, read and compared. It knows of no line and no console.
class RecordsWindow final : public QWidget {
public:
    struct Setup {
        std::filesystem::path folder; ///< of the recordings
        HomeFolders home;             ///< of the installation
        RecordsTexts texts;
        ReportTexts report;
        QSize screen;
        std::function<std::vector<Stick>()> sticks;
        std::function<bool(const QString& file)> openPage; ///< in a browser; says whether it could
    };
    explicit RecordsWindow(Setup setup);

    /// It is never smaller than that.
    static constexpr QSize kSmallest{640, 456};
    /// In front of all others.
    void comeUp();
    /// What the foot tells.
    [[nodiscard]] QString told() const { return foot_->text(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void look();
    void back();
    void tell(const QString& words, Outcome outcome);
    void tellSwitch();
    void record(bool record);
    void save(const RecordedVisit& visit, const std::optional<Stick>& stick, bool withReport);
    void saveAt(const RecordedVisit& visit, const QString& place, bool isStick, bool withReport);
    void saveFile(const QString& name, const std::function<std::string()>& content);
    void choosePlace(QWidget& then, std::function<void(const QString& place)> chosen);
    void report(const RecordedVisit& visit);
    void compare(const RecordedVisit& earlier, const RecordedVisit& later);
    [[nodiscard]] std::string page(const RecordedVisit& visit);
    [[nodiscard]] bool isStick(const QString& place) const;

    Setup setup_;
    Speech say_;
    PanelSizes sizes_;
    Recordings recordings_;
    std::vector<Stick> sticks_;
    QTemporaryDir pages_; ///< that a browser reads
    QTimer looking_;
    QStackedWidget* pile_;
    QLabel* foot_;
    ListPage* list_ = nullptr;
    TextPage* text_ = nullptr;
    TrafficPage* traffic_ = nullptr;
    PlacePage* place_ = nullptr;
};

} // namespace quillon
