#pragma once

#include <functional>

#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>

namespace quillon {

/// The system wants the program to end: it was told so by a signal, or the user's session ends.
class EndRequest final : public QObject {
public:
    /// From here on no signal ends the program by itself. One instance at a time.
    EndRequest();
    ~EndRequest() override;

    /// Called at the first request. While it is empty, the console has taken nothing that it must give back.
    std::function<void()> onFirst;
    /// Called when the request is repeated, or comes before the first can be served.
    std::function<void()> onAgain;
    /// The session ends, and the process with it as soon as this returns.
    std::function<void()> onSessionEnd;

private:
    void requested();
    void listen();

    QElapsedTimer since_;
    QSocketNotifier* signals_ = nullptr;
};

} // namespace quillon
