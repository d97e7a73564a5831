#include "lockdown/HotCornerMonitor.h"

#include "settings/SettingsFixture.test.h"

#include <memory>
#include <tuple>

namespace tapalong {
namespace {

constexpr Rect screen{0, 0, 1920, 1080};
constexpr Point middle{960, 540};
constexpr Point topLeftCorner{0, 1080};

struct HotCornerMonitorTest : SettingsFixture {
    int triggered = 0;
    std::shared_ptr<HotCornerMonitor> monitor = make(ScreenCorner::topLeft, 2.0);

    std::shared_ptr<HotCornerMonitor> make(ScreenCorner corner, double dwellTime) {
        return std::make_shared<HotCornerMonitor>(
            corner, dwellTime, [this] { ++triggered; }, platform);
    }
    void moveTo(Point point) { world.desktop.mouse = point; }
    /// A movement over another application, which the global monitor sees.
    void moveSeenTo(Point point) {
        moveTo(point);
        world.input.deliver(InputEvent{.type = EventType::mouseMoved}, false);
    }
};

TEST_F(HotCornerMonitorTest, StartingWatchesMovementsAndThenPollsFourTimesASecond) {
    EXPECT_EQ(effectsOf(world, [this] { monitor->start(); }),
              (Effects{"monitor.addGlobal mask=96", "timer.every 0.25"}));
}

TEST_F(HotCornerMonitorTest, StoppingEndsTheWatchAndTheDwellAndNotThePolling) {
    monitor->start();
    moveTo(topLeftCorner);
    world.time.advance(0.25);
    EXPECT_EQ(effectsOf(world, [this] { monitor->stop(); }), (Effects{"monitor.remove", "timer.invalidate"}));
    EXPECT_EQ(world.time.timerCount(), 1U);
    EXPECT_TRUE(effectsOf(world, [this] { monitor->stop(); }).empty());
}

TEST_F(HotCornerMonitorTest, AStoppedMonitorThatIsStillReferencedPollsOn) {
    monitor->start();
    monitor->stop();
    moveTo(topLeftCorner);
    world.time.advance(2.25);
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotCornerMonitorTest, StoppingForgetsNeitherThePlaceNorStartsTheDwellAnew) {
    monitor->start();
    moveTo(topLeftCorner);
    world.time.advance(0.25);
    monitor->stop();
    world.time.advance(10);
    EXPECT_EQ(triggered, 0) << "the pointer counts as in the corner, its dwell is cancelled";
}

TEST_F(HotCornerMonitorTest, APollingWithoutItsMonitorEndsByItself) {
    monitor->start();
    moveTo(topLeftCorner);
    world.time.advance(0.25);
    monitor.reset();
    EXPECT_EQ(world.time.timerCount(), 0U);
    world.time.advance(5);
    moveSeenTo(topLeftCorner);
    EXPECT_EQ(triggered, 0);
}

TEST_F(HotCornerMonitorTest, TenPointsFromEitherEdgeIsInTheCorner) {
    using Corner = ScreenCorner;
    EXPECT_TRUE(HotCornerMonitor::isMouseInCorner(Corner::topLeft, {10, 1070}, screen));
    EXPECT_TRUE(HotCornerMonitor::isMouseInCorner(Corner::topRight, {1910, 1070}, screen));
    EXPECT_TRUE(HotCornerMonitor::isMouseInCorner(Corner::bottomLeft, {10, 10}, screen));
    EXPECT_TRUE(HotCornerMonitor::isMouseInCorner(Corner::bottomRight, {1910, 10}, screen));
}

TEST_F(HotCornerMonitorTest, TenAndAHalfPointsFromEitherEdgeIsNot) {
    using Corner = ScreenCorner;
    for (const auto& [corner, offX, offY] : {std::tuple{Corner::topLeft, Point{10.5, 1080}, Point{0, 1069.5}},
                                             std::tuple{Corner::topRight, Point{1909.5, 1080}, Point{1920, 1069.5}},
                                             std::tuple{Corner::bottomLeft, Point{10.5, 0}, Point{0, 10.5}},
                                             std::tuple{Corner::bottomRight, Point{1909.5, 0}, Point{1920, 10.5}}}) {
        EXPECT_FALSE(HotCornerMonitor::isMouseInCorner(corner, offX, screen)) << label(corner);
        EXPECT_FALSE(HotCornerMonitor::isMouseInCorner(corner, offY, screen)) << label(corner);
    }
}

TEST_F(HotCornerMonitorTest, TheCornersAreThoseOfTheFrameWhereverItLies) {
    constexpr Rect elsewhere{-500, 200, 400, 300};
    EXPECT_TRUE(HotCornerMonitor::isMouseInCorner(ScreenCorner::topRight, {-110, 490}, elsewhere));
    EXPECT_FALSE(HotCornerMonitor::isMouseInCorner(ScreenCorner::topRight, {-110.5, 490}, elsewhere));
}

TEST_F(HotCornerMonitorTest, ThePointerMustStayForTheDwellTime) {
    monitor->start();
    moveTo({5, 1075});
    world.time.advance(2.125);
    EXPECT_EQ(triggered, 0);
    world.time.advance(0.125);
    EXPECT_EQ(triggered, 1) << "seen at the first poll, then two seconds";
}

TEST_F(HotCornerMonitorTest, AMovementSeenStartsTheDwellAtOnce) {
    monitor->start();
    moveSeenTo(topLeftCorner);
    world.time.advance(2);
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotCornerMonitorTest, MovingWithinTheCornerNeitherRestartsNorExtendsTheDwell) {
    monitor->start();
    moveSeenTo(topLeftCorner);
    world.time.advance(1);
    EXPECT_TRUE(effectsOf(world, [this] { moveSeenTo({9, 1072}); }).empty());
    world.time.advance(1);
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotCornerMonitorTest, LeavingAfterHalfTheDwellStartsItFromZeroAtTheReturn) {
    monitor->start();
    moveSeenTo(topLeftCorner);
    world.time.advance(1);
    moveSeenTo(middle);
    moveSeenTo(topLeftCorner);
    world.time.advance(1.875);
    EXPECT_EQ(triggered, 0);
    world.time.advance(0.125);
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotCornerMonitorTest, PointerThatStaysForThreeDwellTimesTriggersOnce) {
    monitor->start();
    moveSeenTo(topLeftCorner);
    world.time.advance(6);
    EXPECT_EQ(triggered, 1);
}

TEST_F(HotCornerMonitorTest, AfterATriggerLeavingAndReturningTriggersAgainAfterAFullDwell) {
    monitor->start();
    moveSeenTo(topLeftCorner);
    world.time.advance(3);
    moveSeenTo(middle);
    moveSeenTo(topLeftCorner);
    world.time.advance(1.875);
    EXPECT_EQ(triggered, 1);
    world.time.advance(0.125);
    EXPECT_EQ(triggered, 2);
}

TEST_F(HotCornerMonitorTest, APointerThatLeavesAsTheDwellEndsWins) {
    monitor->start();
    moveTo(topLeftCorner);
    world.time.advance(2.125);
    moveTo(middle);
    world.time.advance(0.125);
    EXPECT_EQ(triggered, 0) << "the poll at the same instant goes first";
    world.time.advance(5);
    EXPECT_EQ(triggered, 0);
}

TEST_F(HotCornerMonitorTest, ACornerOrEdgeOfAnotherScreenNeverTriggers) {
    monitor->start();
    for (const Point beyond : {Point{-1, 1075}, Point{-1920, 1080}, Point{-1, 2000}, Point{5, 1081}}) {
        moveSeenTo(beyond);
        world.time.advance(3);
        EXPECT_EQ(triggered, 0) << beyond.x << ',' << beyond.y;
    }
}

TEST_F(HotCornerMonitorTest, OnEachCornersOwnScreenEdgeThePointerCounts) {
    for (const auto& [corner, point] :
         {std::pair{ScreenCorner::topLeft, Point{0, 1080}}, std::pair{ScreenCorner::topRight, Point{1919, 1080}},
          std::pair{ScreenCorner::bottomLeft, Point{0, 1}}, std::pair{ScreenCorner::bottomRight, Point{1919, 1}}}) {
        const auto each = make(corner, 1);
        triggered = 0;
        each->start();
        moveTo(point);
        world.time.advance(1.25);
        EXPECT_EQ(triggered, 1) << label(corner);
    }
}

TEST_F(HotCornerMonitorTest, WithoutAScreenTheSampleIsSkippedAndNothingChanges) {
    monitor->start();
    moveSeenTo(topLeftCorner);
    world.desktop.mainScreen.reset();
    moveTo(middle);
    world.time.advance(1);
    EXPECT_EQ(triggered, 0);
    world.time.advance(1);
    EXPECT_EQ(triggered, 1) << "nobody saw it leave";
}

TEST_F(HotCornerMonitorTest, CornerAndDwellTimeAreFixedWhenItIsMade) {
    monitor->start();
    settings.exitCorner.set(ScreenCorner::bottomRight);
    settings.hotCornerDwellTime.set(0.5);
    moveSeenTo(topLeftCorner);
    world.time.advance(1.5);
    EXPECT_EQ(triggered, 0);
    world.time.advance(0.5);
    EXPECT_EQ(triggered, 1);
}

} // namespace
} // namespace tapalong
