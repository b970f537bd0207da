#include "sim/Station.h"

#include <utility>

namespace simulator {

Station::Station(const Options& options, std::string link, Watch watch)
    : linkPath_(std::move(link)), watch_(std::move(watch)),
      classroom_(
          options, [this](std::string_view bytes) { send(bytes); }, 0) {
    plugIn();
}

std::int64_t Station::now() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_)
        .count();
}

void Station::readable() {
    const std::string bytes = terminal_->read();
    if (!bytes.empty()) {
        if (watch_.received) {
            watch_.received(bytes);
        }
        classroom_.receive(bytes, now());
    }
}

void Station::writable() {
    terminal_->flush();
}

std::string Station::obey(const std::string& command) {
    if (command == "cable out" || command == "cable in") {
        const bool in = command == "cable in";
        if (in != cableIn()) {
            in ? plugIn() : pullOut();
            if (watch_.cable) {
                watch_.cable();
            }
        }
    } else if (command == "help") {
        return commandsHelp();
    } else {
        return classroom_.command(command, now());
    }
    return {};
}

std::string Station::commandsHelp() {
    return Generator::commandsHelp() +
           "\n  cable out|in        pulls the cable out of the console's end, or plugs it in again";
}

void Station::plugIn() {
    terminal_.emplace();
    if (!linkPath_.empty()) {
        link_.emplace(linkPath_, terminal_->path());
    }
}

// The device is gone for the console, as when an adapter is pulled; the generator goes on.
void Station::pullOut() {
    link_.reset();
    terminal_.reset();
}

void Station::send(std::string_view bytes) {
    if (terminal_) {
        if (watch_.sent) {
            watch_.sent(bytes);
        }
        terminal_->write(bytes);
    }
}

} // namespace simulator
