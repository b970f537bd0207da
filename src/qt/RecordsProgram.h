#pragma once

#include <string>

#include <QString>

namespace quillon {

/// The program with the records' window: beside this one, or where programs are found; empty without one.
[[nodiscard]] QString recordsProgram();

/// Starts it, apart from this process, for the records in a folder, or for those of the installation where
/// that is empty. One that runs already comes to the front instead. Says whether it could be started.
[[nodiscard]] bool startRecords(const QString& program, const std::string& folder);

} // namespace quillon
