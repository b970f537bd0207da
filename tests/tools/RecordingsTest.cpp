#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <unistd.h>

#include "runtime/Packing.h"
#include "tools/replay/EarlierVisit.h"
#include "tools/replay/TrafficFeed.h"
#include "tools/visit/VisitPlayer.h"

namespace quillon {
namespace {

using testing::ElementsAre;

/// A folder of recordings.
class RecordingsTest : public testing::Test {
protected:
    RecordingsTest() {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
    }
    ~RecordingsTest() override { std::filesystem::remove_all(folder); }

    void add(const std::string& name, const std::string& text) const {
        std::ofstream(folder / name, std::ios::binary | std::ios::app) << text;
    }
    void pack(const std::string& name) const {
        if (!canPack()) { // then a closed part stays as it is
            return;
        }
        std::ifstream file(folder / name, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        Packer packer;
        std::string bytes = packer.add(text);
        bytes += packer.finish();
        add(name + ".gz", bytes);
        std::filesystem::remove(folder / name);
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("quillon-recordings-" + std::to_string(::getpid()));
    const std::string head = "# Recorded by Quillon 0.1.0.\nscreen 1024 768\n";
};

TEST_F(RecordingsTest, TheTrafficOfASessionIsFollowedFromPartToPart) {
    add("000007.000.scn", head + "# 0 clock 2026-11-25T09:04:00.000+01:00\n# 100 tx \"ST\"\nwait 140\n"
                                 "rx \"ST2\\r\\n\"\n# 300 tx \"CF1\"\nwait 160\nrx \"AK\\r");
    const auto sessions = sessionsIn(filesOf(folder));
    TrafficFeed feed(folder, sessions, 100);
    EXPECT_THAT(feed.read(), ElementsAre(1, 2, 3));
    EXPECT_EQ(timeOfDayText(feed.timeOf(2).value()), "09:04:00");
    EXPECT_TRUE(feed.isPoll(1));
    EXPECT_FALSE(feed.isPoll(2)) << "the first that is heard of the phase is news";

    add("000007.000.scn", "\\n\"\n# 400 tx \"HU\"\nwait 2000\n");
    EXPECT_THAT(feed.read(), ElementsAre(3, 4, 5)) << "the fate of the command has come";
    EXPECT_EQ(feed.row(3).fates.front().kind, Fate::Kind::Acknowledged);
    EXPECT_EQ(feed.since(4), 0);

    // The next part is begun, and the one before it packed, before the rest of that was read.
    add("000007.000.scn", "rx \"ST2\\r\\n\"\n");
    add("000007.001.scn", "rx \"ER12\\r\\n\"\n");
    pack("000007.000.scn");
    EXPECT_THAT(feed.read(), ElementsAre(6, 7));
    EXPECT_TRUE(feed.isPoll(6));
    EXPECT_TRUE(feed.row(7).isWrong());
    EXPECT_FALSE(feed.row(6).isWrong());

    // Who comes later, when a part is gone, hears of the gap.
    pack("000007.001.scn");
    add("000007.002.scn", "# 9000 tx \"RX1\"\n");
    std::filesystem::remove(folder / (canPack() ? "000007.001.scn.gz" : "000007.001.scn"));
    TrafficFeed later(folder, sessionsIn(filesOf(folder)), 3);
    EXPECT_THAT(later.read(), ElementsAre(6, 7, 8)) << "no more rows are kept than are wanted";
    EXPECT_EQ(later.row(7).text, "gap 6700 0");
    EXPECT_EQ(later.row(8).text, "RX1");
}

TEST_F(RecordingsTest, AVisitIsComparedWithTheLastOfTheSameDeviceAndGenerator) {
    const auto session = [this](const char* day, const char* version, const char* device) {
        return head + "# 0 clock " + day + "T09:00:00.000+01:00\nstart\nwait 500\n# 500 port \"" + device +
               "\"\nrx \"VR" + version + "\\r\\nST2\\r\\n\"\nwait 1000\n";
    };
    add("000001.000.scn", session("2025-11-01", "3.07", "/dev/a = /dev/ttyUSB0, usb-one"));
    add("000002.000.scn", session("2025-12-01", "3.07", "/dev/b = /dev/ttyUSB0, usb-two"));
    add("000003.000.scn", session("2026-01-01", "2.00", "/dev/a = /dev/ttyUSB0, usb-one"));
    add("000004.000.scn", session("2026-02-01", "3.07", "/dev/a = /dev/ttyUSB1, usb-one"));
    add("000005.000.scn", session("2026-02-01", "3.07", "/dev/a = /dev/ttyUSB0, usb-one"));
    Recordings recordings(folder);
    const auto last = recordings.visit(1);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->sessions.size(), 2U) << "the same adapter, plugged in once more";
    const auto before = earlierVisit(recordings, *last, visitOf(recordings.textOf(*last).text));
    ASSERT_TRUE(before);
    EXPECT_EQ(dateText(before->clock.at(0).value()), "2025-11-01");
    EXPECT_FALSE(earlierVisit(recordings, *recordings.visit(4), *before));
}

} // namespace
} // namespace quillon
