#include "platform/linux/instance/FirstInstance.h"

#include "platform/desktop/DesktopTest.test.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <optional>
#include <thread>

namespace tapalong {
namespace {

using namespace std::chrono_literals;
using Claim = FirstInstance::Claim;

struct FirstInstanceTest : DesktopTest {
    /// Nobody else's: tests run side by side.
    const std::string display = ":test-" + std::to_string(getpid());
    int shown = 0;

    void serve(FirstInstance& instance) {
        instance.serve([this] { ++shown; });
    }

    /// What a later start gets while the event loop turns here.
    Claim claimElsewhere() {
        std::atomic<bool> isDone = false;
        Claim claim = Claim::first;
        std::thread start([&] {
            claim = FirstInstance(display).claim();
            isDone = true;
        });
        EXPECT_TRUE(waitFor([&] { return isDone.load(); }));
        start.join();
        return claim;
    }

    /// A socket of that name as anything else on the computer may have one.
    void take(const Socket& socket) const {
        const std::string name = "tapalong/" + std::to_string(getuid()) + '/' + display;
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::copy(name.begin(), name.end(), address.sun_path + 1);
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
        ASSERT_EQ(bind(socket.descriptor(), reinterpret_cast<const sockaddr*>(&address), length), 0);
    }
};

TEST_F(FirstInstanceTest, TheFirstIsAskedToShowItselfByEachLaterOne) {
    FirstInstance first(display);
    EXPECT_EQ(first.claim(), Claim::first);
    serve(first);
    EXPECT_EQ(claimElsewhere(), Claim::answered);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(claimElsewhere(), Claim::answered);
    EXPECT_EQ(shown, 2);
}

TEST_F(FirstInstanceTest, OneThatDoesNotAnswerIsWaitedForInVain) {
    FirstInstance first(display);
    EXPECT_EQ(first.claim(), Claim::first);
    EXPECT_EQ(FirstInstance(display).claim(), Claim::unanswered);
    serve(first);
    EXPECT_EQ(claimElsewhere(), Claim::answered);
    EXPECT_EQ(shown, 2) << "the request that came before is not lost";
}

TEST_F(FirstInstanceTest, OnAnotherDisplayOneIsTheFirstAgain) {
    FirstInstance first(display);
    EXPECT_EQ(first.claim(), Claim::first);
    EXPECT_EQ(FirstInstance(display + ".other").claim(), Claim::first);
}

TEST_F(FirstInstanceTest, TheNameIsFreeWhenTheFirstHasGone) {
    {
        FirstInstance first(display);
        EXPECT_EQ(first.claim(), Claim::first);
        serve(first);
    }
    EXPECT_EQ(FirstInstance(display).claim(), Claim::first);
}

TEST_F(FirstInstanceTest, TheNameIsFreeWhenTheFirstWasKilled) {
    const pid_t first = fork();
    if (first == 0) {
        FirstInstance instance(display);
        _exit(instance.claim() == Claim::first && raise(SIGKILL) == 0 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(first, &status, 0), first);
    ASSERT_TRUE(WIFSIGNALED(status)) << "it had not got the name";
    EXPECT_EQ(FirstInstance(display).claim(), Claim::first);
}

TEST_F(FirstInstanceTest, WhoWaitsTakesTheNameWhenTheFirstLeavesInstead) {
    std::optional<FirstInstance> first(display);
    EXPECT_EQ(first->claim(), Claim::first);
    Claim claim = Claim::unanswered;
    std::thread start([&] { claim = FirstInstance(display).claim(); });
    std::this_thread::sleep_for(100ms); // whichever comes first, what follows holds
    first.reset();
    start.join();
    EXPECT_EQ(claim, Claim::first);
}

TEST_F(FirstInstanceTest, AForeignSocketOfThatNameStopsNobody) {
    const Socket foreign(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    take(foreign);
    ASSERT_EQ(listen(foreign.descriptor(), 1), 0);
    FirstInstance instance(display);
    EXPECT_EQ(instance.claim(), Claim::first);
    serve(instance);
}

TEST_F(FirstInstanceTest, ANameThatNobodyListensAtStopsNobody) {
    const Socket foreign(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    take(foreign);
    EXPECT_EQ(FirstInstance(display).claim(), Claim::first);
}

TEST_F(FirstInstanceTest, ANameThatIsTooLongStopsNobody) {
    const std::string tooLong(200, 'x');
    FirstInstance first(tooLong);
    EXPECT_EQ(first.claim(), Claim::first);
    EXPECT_EQ(FirstInstance(tooLong).claim(), Claim::first);
}

} // namespace
} // namespace tapalong
