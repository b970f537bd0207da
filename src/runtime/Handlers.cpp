#include "runtime/Handlers.h"

#include "base/ScenarioText.h"

namespace quillon {

std::string textOf(const Cause& cause) {
    switch (cause.kind) {
    case Cause::Kind::Key:
        return "key " + std::string(cause.name);
    case Cause::Kind::Timer:
        return "timer " + std::string(cause.name);
    case Cause::Kind::Message:
        break;
    }
    return "message " + scenarioText(cause.name) + " (" + std::string(cause.handler) + ")";
}

} // namespace quillon
