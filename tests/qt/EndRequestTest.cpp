#include <csignal>

#include <QGuiApplication>

#include "Bench.h"
#include "qt/EndRequest.h"

namespace quillon {
namespace {

TEST(EndRequest, TheEndOfTheSessionIsServedBeforeTheSystemGoesOn) {
    EndRequest request;
    int served = 0;
    request.onSessionEnd = [&served] { ++served; };
    char nobody = 0; // the session's manager, whom nobody asks anything
    QMetaObject::invokeMethod(qApp, "commitDataRequest", Qt::DirectConnection,
                              QGenericArgument("QSessionManager&", &nobody));
    EXPECT_EQ(served, 1);
    QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection);
    EXPECT_EQ(served, 2);
}

#ifndef _WIN32
TEST(EndRequest, SignalsOfOneMomentAreOneRequestAndIgnoredOnesStayIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    {
        EndRequest request;
        std::string served;
        request.onFirst = [&served] { served += "first "; };
        request.onAgain = [&served] { served += "again "; };
        std::raise(SIGHUP);
        waitFor([] { return false; }, 50);
        EXPECT_EQ(served, "");
        std::raise(SIGTERM);
        waitFor([&] { return !served.empty(); });
        std::raise(SIGINT);
        waitFor([] { return false; }, 550);
        EXPECT_EQ(served, "first ");
        std::raise(SIGTERM);
        EXPECT_TRUE(waitFor([&] { return served == "first again "; }));
    }
    std::signal(SIGHUP, SIG_DFL);
}
#endif

} // namespace
} // namespace quillon
