#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace quillon {

/// Counts what passes an edge and fails one of it, or all from there on.
struct Edge {
    int failing = 0;      ///< the first one that fails; 0 for none
    bool onwards = false; ///< all behind it fail as well
    int passed = 0;

    /// One more; true when it fails.
    bool fails() {
        ++passed;
        return failing != 0 && (onwards ? passed >= failing : passed == failing);
    }
};

/// A machine whose edges can fail one by one. The device stays open towards the link, as a real port does
/// whose device has gone.
struct FaultyMachine {
    struct Port final : SerialPort {
        explicit Port(FaultyMachine& owner) : machine(owner) {}
        bool open(int port, std::string_view settings) override {
            close();
            return opened = !machine.open.fails() && machine.memory.port.open(port, settings);
        }
        [[nodiscard]] std::string failure() const override { return "COM1: gone"; }
        void close() override {
            opened = false;
            machine.memory.port.close();
        }
        [[nodiscard]] bool isOpen() const override { return opened; }
        void write(std::string_view bytes) override {
            const bool sent = !machine.write.fails();
            if (sent) {
                machine.memory.port.write(bytes);
            }
            tellOutcome(bytes, sent);
        }
        void receive(std::string_view bytes) {
            if (opened && receiver_ && !machine.read.fails()) {
                receiver_(bytes);
            }
        }
        FaultyMachine& machine;
        bool opened = false;
    };

    struct Sink final : TextSink {
        Sink(FaultyMachine& owner, std::unique_ptr<TextSink> file) : machine(owner), sink(std::move(file)) {}
        bool write(std::string_view text) override {
            if (machine.logWrite.fails()) {
                (void)sink->write(text.substr(0, text.size() / 2)); // a disk that fills takes what it can
                return false;
            }
            return sink->write(text);
        }
        FaultyMachine& machine;
        std::unique_ptr<TextSink> sink;
    };

    struct Files final : Folder {
        explicit Files(FaultyMachine& owner) : machine(owner) {}
        [[nodiscard]] std::optional<std::string> read(std::string_view name,
                                                      std::size_t limit) const override {
            return machine.memory.folder.read(name, limit);
        }
        [[nodiscard]] std::unique_ptr<TextSink> create(std::string_view name) override {
            return machine.folderFull ? nullptr
                                      : std::make_unique<Sink>(machine, machine.memory.folder.create(name));
        }
        void rename(std::string_view name, std::string_view newName) override {
            machine.memory.folder.rename(name, newName);
        }
        FaultyMachine& machine;
    };

    Edge open;
    Edge write;
    Edge read;
    Edge logWrite;
    bool folderFull = false; ///< no file can be created
    MemoryPlatform memory;
    Port port{*this};
    Files files{*this};
    std::unique_ptr<Application> application;

    void start(std::string_view commandLine = {}) {
        application.reset();
        application =
            std::make_unique<Application>(Platform{memory.time.schedule(), memory.time, port, memory.store,
                                                   files, memory.desktop, memory.power},
                                          commandLine);
        application->start();
    }
    void hear(std::string_view message) { port.receive(std::string(message) + "\r\n"); }
    void wait(Milliseconds ms) { memory.time.advance(ms); }
    [[nodiscard]] Control& console(std::string_view name) {
        return application->console().ControlHost::at(name);
    }
    [[nodiscard]] std::string box() const {
        return memory.desktop.boxes().empty() ? "" : memory.desktop.boxes().back().text;
    }
};

} // namespace quillon
