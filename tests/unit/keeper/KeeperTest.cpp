#include "keeper/Keeper.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

namespace quillon {
namespace {

using testing::Contains;
using testing::Key;
using testing::Not;

/// A disk in memory, one of whose calls fails, or all from there on. What a failed sync had to keep is lost.
class FailingDisk final : public Disk {
public:
    FileList files() override {
        FileList list;
        for (const auto& [name, text] : content) {
            list.push_back({name, static_cast<std::int64_t>(text.size())});
        }
        return fails() ? FileList{} : list;
    }
    Created create(const std::string& name) override {
        if (fails()) {
            return Created::No;
        }
        if (!content.emplace(name, "").second) {
            return Created::Taken;
        }
        open_ = name;
        synced_ = 0;
        return Created::Yes;
    }
    std::size_t write(std::string_view bytes) override {
        const std::size_t taken = fails() ? bytes.size() / 2 : bytes.size();
        content[open_] += bytes.substr(0, taken);
        dirtySince = dirtySince.value_or(now);
        return taken;
    }
    bool full() const override { return true; }
    bool cut(std::size_t length) override {
        if (fails()) {
            return false;
        }
        content[open_].resize(length);
        return true;
    }
    bool sync() override {
        dirtySince.reset();
        if (fails()) {
            content[open_].resize(synced_);
            return false;
        }
        synced_ = content[open_].size();
        return true;
    }
    bool seize(const std::vector<std::string>& names) override {
        return !fails() &&
               std::ranges::none_of(names, [this](const auto& name) { return inUse.contains(name); });
    }
    bool pack(const std::string& name) override {
        if (fails()) {
            content[name + ".gz.new"] = "half";
            return false;
        }
        content[name + ".gz"] = content[name];
        return content.erase(name) == 1;
    }
    bool remove(const std::string& name) override { return !fails() && content.erase(name) == 1; }
    bool spoke(const std::string& name) override {
        return !fails() && content[name].find("rx ") != std::string::npos;
    }

    std::map<std::string, std::string> content;
    std::set<std::string> inUse;
    int calls = 0;
    int failsAt = 0;
    bool forGood = false;
    Milliseconds now = 0;
    std::optional<Milliseconds> dirtySince;

private:
    bool fails() { return ++calls == failsAt || (forGood && failsAt > 0 && calls > failsAt); }

    std::string open_;
    std::size_t synced_ = 0;
};

/// What is read of a session: the packed part where there are two.
std::string textOf(FailingDisk& disk, std::int64_t session) {
    disk.failsAt = 0;
    std::string text;
    for (const RecordedSession& found : sessionsIn(disk.files())) {
        for (const RecordingPart& part : found.parts) {
            text += found.number == session ? disk.content[part.name] : "";
        }
    }
    return text;
}

/// A session of some parts beside older ones, on a disk that is too small for them all.
std::string record(FailingDisk& disk, bool& begun) {
    for (const char* name : {"000001.000.scn.gz", "000001.001.scn.gz", "000002.000.scn", "000002.001.scn.gz",
                             "000003.000.scn.gz", "000004.000.scn", "000004.000.scn.gz.new"}) {
        disk.content[name] = std::string(400, 'x');
    }
    disk.content["000001.001.scn.gz"] += "\nrx \"ST2\"\n";
    disk.inUse = {"000002.000.scn"};
    Keeper keeper(disk, Keeper::Limits{.part = 500, .bound = 3'400});
    begun = keeper.begin();
    std::string all;
    std::size_t given = 0;
    for (int second = 0; begun && second < 40; ++second) {
        all += "line " + std::string(static_cast<std::size_t>(second), '-') + "\nand more\n";
        for (int step = 0; step < 20; ++step) {
            disk.now += 50;
            if (keeper.hungry() && given < all.size()) {
                const std::size_t size = std::min<std::size_t>(all.size() - given, 7);
                keeper.take(all.substr(given, size), disk.now);
                given += size;
            }
            if (const auto due = keeper.due(); due && *due <= disk.now) {
                keeper.work(disk.now);
            }
            if (disk.failsAt == 0 && disk.dirtySince) {
                EXPECT_LE(disk.now - *disk.dirtySince, 1000);
            }
        }
    }
    if (begun) {
        keeper.end(disk.now);
    }
    all.resize(given);
    return all;
}

TEST(KeeperTest, WhateverCallFailsWhatWasTakenIsReadOnceAndInOrder) {
    FailingDisk good;
    bool begun = false;
    const std::string all = record(good, begun);
    EXPECT_EQ(textOf(good, 5), all);
    EXPECT_THAT(good.content, Contains(Key("000005.002.scn.gz"))) << "it has parts, and they are packed";
    EXPECT_THAT(good.content, Contains(Key("000004.000.scn.gz"))) << "what a crash has left is packed";
    EXPECT_THAT(good.content, Not(Contains(Key("000004.000.scn.gz.new"))));
    EXPECT_THAT(good.content, Not(Contains(Key("000003.000.scn.gz")))) << "the bound is kept";
    EXPECT_THAT(good.content, Contains(Key("000001.001.scn.gz"))) << "the generator spoke";
    for (int call = 1; call <= good.calls; ++call) {
        for (const bool forGood : {false, true}) {
            SCOPED_TRACE(std::to_string(call) + (forGood ? " for good" : " once"));
            FailingDisk disk;
            disk.failsAt = call;
            disk.forGood = forGood;
            const std::string given = record(disk, begun);
            if (!begun) {
                continue;
            }
            const std::string kept = textOf(disk, 5);
            EXPECT_EQ(kept, given.substr(0, kept.size()));
            EXPECT_TRUE(forGood || kept == given) << kept.size() << " of " << given.size();
            EXPECT_THAT(disk.content, Contains(Key("000002.000.scn"))) << "another writes it";
            EXPECT_THAT(disk.content, Contains(Key(testing::StartsWith("000005.000.scn"))));
        }
    }
}

TEST(KeeperTest, TenSessionsThatBeginAtOnceGetTenNumbers) {
    FailingDisk disk;
    std::vector<std::unique_ptr<Keeper>> keepers;
    std::set<std::string> names;
    for (int number = 0; number < 10; ++number) {
        keepers.push_back(std::make_unique<Keeper>(disk, Keeper::Limits{}));
        disk.failsAt = disk.calls + 1; // what the others have made is not seen yet
        ASSERT_TRUE(keepers.back()->begin());
        names.insert(keepers.back()->name());
    }
    EXPECT_EQ(names.size(), 10U);
}

} // namespace
} // namespace quillon
