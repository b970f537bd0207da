#pragma once

#include <functional>

#include <QFileSystemWatcher>
#include <QLockFile>
#include <QString>

namespace quillon {

/// There is one window of the records for each user. Who comes second asks the first to come up, with the
/// folder that it was to show: by a file in a folder that is this user's alone, which the first takes away. A
/// socket would do as well, and would link a web client and four kinds of encryption.
class Instance {
public:
    Instance();

    /// This one is the first, and is told what others ask for.
    [[nodiscard]] bool isFirst() const { return first_; }
    std::function<void(const QString& folder)> onAsked;
    /// Asks the first. Says whether it has heard.
    [[nodiscard]] bool ask(const QString& folder) const;

private:
    void serve();
    void take();

    QString place_;
    QLockFile lock_;
    bool first_;
    QFileSystemWatcher watcher_;
};

} // namespace quillon
