#include "Copy.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <iostream>
#include <system_error>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon {

namespace {

[[noreturn]] void giveUp(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

} // namespace

SharedBytes::SharedBytes(std::size_t size) {
    void* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        giveUp("mmap");
    }
    bytes_ = {static_cast<std::uint8_t*>(memory), size};
}

SharedBytes::~SharedBytes() {
    munmap(bytes_.data(), bytes_.size());
}

std::size_t& SharedText::length() const {
    return *reinterpret_cast<std::size_t*>(shared_.bytes().data());
}

void SharedText::add(std::string_view text) {
    const auto room = shared_.bytes().subspan(sizeof(std::size_t) + length());
    if (text.size() <= room.size()) {
        std::copy(text.begin(), text.end(), room.begin());
        length() += text.size();
    }
}

std::string_view SharedText::text() const {
    return {reinterpret_cast<const char*>(shared_.bytes().data()) + sizeof(std::size_t), length()};
}

std::string inACopy(const std::function<void()>& work) {
    const pid_t copy = fork();
    if (copy < 0) {
        giveUp("fork");
    }
    if (copy == 0) {
        try {
            work();
        } catch (const std::exception& problem) {
            std::cerr << problem.what() << std::endl;
            _exit(1);
        }
        _exit(0); // neither destructors nor what a process does at its end: all of it is the origin's
    }
    int status = 0;
    while (waitpid(copy, &status, 0) < 0) {
        if (errno != EINTR) {
            giveUp("waitpid");
        }
    }
    if (WIFSIGNALED(status)) {
        return std::string("signal ") + strsignal(WTERMSIG(status));
    }
    return WEXITSTATUS(status) == 0 ? "" : "exit status " + std::to_string(WEXITSTATUS(status));
}

} // namespace quillon
