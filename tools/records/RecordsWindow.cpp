#include "RecordsWindow.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include <QAccessible>
#include <QDir>
#include <QKeyEvent>
#include <QStorageInfo>
#include <QVBoxLayout>

#include "shell/RecordingSwitches.h"
#include "tools/replay/EarlierVisit.h"
#include "tools/visit/VisitCsv.h"
#include "tools/visit/VisitDifference.h"
#include "tools/visit/VisitHtml.h"
#include "tools/visit/VisitPlayer.h"
#include "tools/visit/VisitText.h"

namespace quillon {

namespace {

constexpr int kLook = 2000; // ms
constexpr const char* kProfile = "Quillon.ini";

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::filesystem::path pathOf(const QString& text) {
    return text.toStdU16String();
}

QString textOfPath(const std::filesystem::path& path) {
    return QString::fromStdU16String(path.u16string());
}

/// The home is written as everybody knows it.
QString shortPath(const std::filesystem::path& path) {
    const QString text = textOfPath(path);
    const QString home = QDir::homePath() + u'/';
    return text.startsWith(home) ? QStringLiteral("~/") + text.mid(home.size()) : text;
}

bool isInMemory(const std::filesystem::path& folder) {
    const QString memory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !memory.isEmpty() && textOfPath(folder).startsWith(memory + u'/');
}

} // namespace

RecordsWindow::RecordsWindow(Setup setup)
    : setup_(std::move(setup)), say_(setup_.texts), sizes_(setup_.screen), recordings_(setup_.folder),
      pile_(new QStackedWidget(this)), foot_(new QLabel(this)) {
    setWindowTitle(say_("sRecords"));
    setMinimumSize(kSmallest);
    setWindowFlag(Qt::WindowStaysOnTopHint); // the console may be so, too
    const PageContext context{say_, sizes_,
                              [this](const QString& words, Outcome outcome) { tell(words, outcome); }};
    list_ = new ListPage(
        recordings_, context,
        {[this](const RecordedVisit& visit, const std::optional<Stick>& stick, bool withReport) {
             save(visit, stick, withReport);
         },
         [this](const RecordedVisit& visit) { report(visit); },
         [this](const RecordedVisit& visit, bool running) {
             pile_->setCurrentWidget(traffic_);
             traffic_->show(recordings_, visit, running);
             tell({}, Outcome::Done);
         },
         [this](const RecordedVisit& earlier, const RecordedVisit& later) { compare(earlier, later); },
         [this](bool on) { record(on); }});
    text_ = new TextPage(context);
    traffic_ = new TrafficPage(
        context, [this] { back(); },
        [this](const QString& name, const QString& text) {
            saveFile(name + QStringLiteral(".txt"), [text] { return text.toStdString(); });
        });
    place_ = new PlacePage(context);
    for (QWidget* page : std::initializer_list<QWidget*>{list_, text_, traffic_, place_}) {
        pile_->addWidget(page);
    }
    auto* column = new QVBoxLayout(this);
    column->addWidget(pile_, 1);
    column->addWidget(foot_);
    foot_->setWordWrap(true);
    foot_->setObjectName(QStringLiteral("foot"));
    tell({}, Outcome::Done);
    tellSwitch();
    connect(&looking_, &QTimer::timeout, this, [this] { look(); });
    look();
}

void RecordsWindow::comeUp() {
    if (isMinimized()) {
        showNormal();
    }
    show();
    raise();
    activateWindow();
}

void RecordsWindow::showEvent(QShowEvent* /*event*/) {
    looking_.start(kLook);
}

void RecordsWindow::hideEvent(QHideEvent* /*event*/) {
    looking_.stop();
}

void RecordsWindow::look() {
    sticks_ = setup_.sticks();
    list_->setSticks(sticks_);
    if (pile_->currentWidget() == list_) {
        list_->refresh();
        tellSwitch();
    }
}

void RecordsWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (pile_->currentWidget() == place_) {
        place_->cancel();
    } else if (pile_->currentWidget() != list_) {
        back();
    } else if (list_->giveUpChoice()) {
        tell({}, Outcome::Done);
    } else {
        close();
    }
}

void RecordsWindow::back() {
    traffic_->leave();
    tell({}, Outcome::Done);
    pile_->setCurrentWidget(list_);
}

void RecordsWindow::tell(const QString& words, Outcome outcome) {
    struct FootLook {
        const char* sign;
        const char* style;
    };
    const FootLook look =
        outcome == Outcome::Done     ? FootLook{"\u2713 ", "background:#eaf4e6;border-left:4px solid #3b7a2a"}
        : outcome == Outcome::Failed ? FootLook{"! ", "background:#fde9e9;border-left:4px solid #a3191f"}
                                     : FootLook{"", "background:#fff6d8;border-left:4px solid #b8860b"};
    foot_->setStyleSheet(QString::fromUtf8(look.style) + QStringLiteral(";padding:6px 10px"));
    foot_->setText(words.isEmpty() ? QString() : QString::fromUtf8(look.sign) + words);
    foot_->setVisible(!words.isEmpty());
    foot_->repaint(); // what was begun may take its time
    QAccessibleEvent told(foot_, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

void RecordsWindow::tellSwitch() {
    const RecordingSwitches switches = recordingSwitches(contentOf(setup_.home.read / kProfile));
    const QString size = Speech::size(recordings_.bytes());
    const QString bound = Speech::size(switches.bytes);
    const QString folder = shortPath(recordings_.folder());
    QString meaning = switches.keep ? say_.with("sRecordsMeaning", size, bound, folder)
                                    : say_.with("sRecordsMeaningOff", size, bound, folder);
    if (isInMemory(recordings_.folder())) {
        meaning = say_("sRecordsMemoryNote") + QStringLiteral(" ") + meaning;
    } else {
        constexpr qint64 kRoom = 1'000'000; // bytes
        const QStorageInfo disk(textOfPath(recordings_.folder()));
        if (disk.isValid() && disk.bytesAvailable() < kRoom) {
            meaning = say_("sRecordsDiskNote") + QStringLiteral(" ") + meaning;
        }
    }
    list_->setSwitch(switches.keep, meaning);
}

void RecordsWindow::record(bool record) {
    const std::filesystem::path file = setup_.home.read / kProfile;
    std::error_code error;
    std::filesystem::create_directories(setup_.home.read, error);
    const std::string problem = saveWhole(file, withKeep(contentOf(file), record));
    if (!problem.empty()) {
        tell(say_.with("sRecordsNoSwitch", textOfPath(file), QString::fromStdString(problem)),
             Outcome::Failed);
    } else {
        tell(record ? say_("sRecordsSwitchedOn") : say_("sRecordsSwitchedOff"), Outcome::Done);
    }
    tellSwitch();
}

bool RecordsWindow::isStick(const QString& place) const {
    return std::ranges::any_of(sticks_, [&place](const Stick& stick) {
        return place == stick.path || place.startsWith(stick.path + u'/');
    });
}

void RecordsWindow::choosePlace(QWidget& then, std::function<void(const QString& place)> chosen) {
    tell(say_("sRecordsChoose"), Outcome::Going);
    pile_->setCurrentWidget(place_);
    place_->choose(sticks_, [this, &then, chosen = std::move(chosen)](const QString& place) {
        pile_->setCurrentWidget(&then);
        tell({}, Outcome::Done);
        if (!place.isEmpty()) {
            chosen(place);
        }
    });
}

void RecordsWindow::save(const RecordedVisit& visit, const std::optional<Stick>& stick, bool withReport) {
    if (stick) {
        saveAt(visit, stick->path, true, withReport);
    } else {
        choosePlace(*list_, [this, visit, withReport](const QString& place) {
            saveAt(visit, place, isStick(place), withReport);
        });
    }
}

void RecordsWindow::saveAt(const RecordedVisit& visit, const QString& place, bool stick, bool withReport) {
    tell(say_("sRecordsSaving"), Outcome::Going);
    const RecordingText read = recordings_.textOf(visit);
    std::filesystem::path file = nameAt(pathOf(place), visit);
    std::string problem = savePacked(file, read.text);
    std::error_code error;
    std::uintmax_t bytes = std::filesystem::file_size(file, error);
    if (problem.empty() && withReport) {
        const std::string report = page(visit);
        const auto beside = pathOf(place) / (visitName(visit) + ".html");
        problem = saveWhole(beside, report);
        file = problem.empty() ? file : beside;
        bytes += report.size();
    }
    if (!problem.empty()) {
        tell(say_.with("sRecordsNotSaved", textOfPath(file), QString::fromStdString(problem)),
             Outcome::Failed);
        return;
    }
    QString words =
        say_.with("sRecordsSaved", textOfPath(file.filename()), Speech::size(static_cast<qint64>(bytes)));
    words += stick ? QStringLiteral(" ") + say_("sRecordsPull") : QString();
    if (!read.problem.empty()) {
        words += QStringLiteral(" ") + say_.with("sRecordsPartly", QString::fromStdString(read.problem));
    }
    tell(words, read.problem.empty() ? Outcome::Done : Outcome::Failed);
}

void RecordsWindow::saveFile(const QString& name, const std::function<std::string()>& content) {
    choosePlace(*pile_->currentWidget(), [this, name, content](const QString& place) {
        tell(say_("sRecordsSaving"), Outcome::Going);
        const std::filesystem::path file = pathOf(place) / pathOf(name);
        const std::string bytes = content();
        if (const std::string problem = saveWhole(file, bytes); !problem.empty()) {
            tell(say_.with("sRecordsNotSaved", textOfPath(file), QString::fromStdString(problem)),
                 Outcome::Failed);
            return;
        }
        const QString pull = isStick(place) ? QStringLiteral(" ") + say_("sRecordsPull") : QString();
        tell(say_.with("sRecordsSaved", name, Speech::size(static_cast<qint64>(bytes.size()))) + pull,
             Outcome::Done);
    });
}

std::string RecordsWindow::page(const RecordedVisit& visit) {
    const Visit played = visitOf(recordings_.textOf(visit).text);
    const auto before = earlierVisit(recordings_, visit, played);
    return htmlOf(played, setup_.report, before ? &*before : nullptr);
}

void RecordsWindow::report(const RecordedVisit& visit) {
    tell(say_("sRecordsPlaying"), Outcome::Going);
    const Visit played = visitOf(recordings_.textOf(visit).text);
    const auto before = earlierVisit(recordings_, visit, played);
    const Visit* since = before ? &*before : nullptr;
    const std::string html = htmlOf(played, setup_.report, since);
    const std::string text = quillon::textOf(played, setup_.report, since);
    const std::string csv = csvOf(played);
    const QString name = QString::fromStdString(visitName(visit));
    const auto open = [this, html, name] {
        const QString file = pages_.filePath(name + QStringLiteral(".html"));
        if (!saveWhole(pathOf(file), html).empty() || !setup_.openPage(file)) {
            tell(say_("sRecordsNoBrowser"), Outcome::Failed);
        }
    };
    const auto saver = [this, name](const char* ending, const std::string& content) {
        return TextPage::Key{say_.with("sRecordsSaveAs", QLatin1String(ending)),
                             [this, name, ending, content] {
                                 saveFile(name + u'.' + QLatin1String(ending), [content] { return content; });
                             }};
    };
    text_->show(say_("sRecordsReport"), QString::fromStdString(text),
                {{say_("sRecordsBack"), [this] { back(); }},
                 {say_("sRecordsBrowser"), open},
                 saver("html", html),
                 saver("txt", text),
                 saver("csv", csv)});
    pile_->setCurrentWidget(text_);
    tell({}, Outcome::Done);
}

void RecordsWindow::compare(const RecordedVisit& earlier, const RecordedVisit& later) {
    tell(say_("sRecordsPlaying"), Outcome::Going);
    std::string text = plainText(comparisonOf(visitOf(recordings_.textOf(earlier).text),
                                              visitOf(recordings_.textOf(later).text), setup_.report));
    const QString name = QString::fromStdString(visitName(later)) + QStringLiteral("-compared.txt");
    text_->show(say_("sRecordsCompare"), QString::fromStdString(text),
                {{say_("sRecordsBack"), [this] { back(); }},
                 {say_.with("sRecordsSaveAs", QStringLiteral("txt")),
                  [this, name, text] { saveFile(name, [text] { return text; }); }}});
    pile_->setCurrentWidget(text_);
    tell({}, Outcome::Done);
}

} // namespace quillon
