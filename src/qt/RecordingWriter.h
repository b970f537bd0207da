#pragma once

#include <string>

namespace quillon {

struct RecordingPlace;

/// What the writer is told first.
[[nodiscard]] std::string recordingOrder(const RecordingPlace& place);

/// The life of the writer's process: takes the order and a recording from `data` until that ends, and says on
/// `words`, a line each, what the operator should know. Of all else that was open it keeps nothing.
void runRecordingWriter(int data, int words);

} // namespace quillon
