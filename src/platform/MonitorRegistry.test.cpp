#include "platform/MonitorRegistry.h"

#include <gtest/gtest.h>

#include <string>

namespace tapalong {
namespace {

constexpr EventMask keyDowns = maskOf(EventType::keyDown);
constexpr EventMask keysAndModifiers = maskOf(EventType::keyDown) | maskOf(EventType::flagsChanged);
const InputEvent keyDown{.type = EventType::keyDown};

struct MonitorRegistryTest : testing::Test {
    MonitorRegistry registry;
    std::string called;

    MonitorToken local(EventMask mask, char name, Verdict verdict = Verdict::pass) {
        return registry.addLocal(mask, [this, name, verdict](const InputEvent&) {
            called += name;
            return verdict;
        });
    }
    MonitorToken global(EventMask mask, char name) {
        return registry.addGlobal(mask, [this, name](const InputEvent&) { called += name; });
    }
};

TEST_F(MonitorRegistryTest, TheNewestLocalMonitorIsAskedFirst) {
    local(keyDowns, 'a');
    local(keyDowns, 'b');
    EXPECT_EQ(registry.dispatchLocal(keyDown), Verdict::pass);
    EXPECT_EQ(called, "ba");
}

TEST_F(MonitorRegistryTest, AConsumedEventIsHiddenFromOlderMonitorsWithAnotherMask) {
    local(keyDowns, 'a');
    local(keysAndModifiers, 'b', Verdict::consume);
    EXPECT_EQ(registry.dispatchLocal(keyDown), Verdict::consume);
    EXPECT_EQ(called, "b");
}

TEST_F(MonitorRegistryTest, MonitorsWithTheSameMaskEachGetAConsumedEvent) {
    local(keyDowns, 'a', Verdict::consume);
    local(keyDowns, 'b');
    local(keyDowns, 'c', Verdict::consume);
    EXPECT_EQ(registry.dispatchLocal(keyDown), Verdict::consume);
    EXPECT_EQ(called, "cba");
}

TEST_F(MonitorRegistryTest, AnOlderMonitorStillConsumesWhatANewerOneLetPass) {
    local(keyDowns, 'a', Verdict::consume);
    local(keysAndModifiers, 'b');
    EXPECT_EQ(registry.dispatchLocal(keyDown), Verdict::consume);
    EXPECT_EQ(called, "ba");
}

TEST_F(MonitorRegistryTest, EventsOutsideTheMaskAreNotSeen) {
    local(keyDowns, 'a', Verdict::consume);
    global(keyDowns, 'g');
    const InputEvent modifier{.type = EventType::flagsChanged};
    EXPECT_EQ(registry.dispatchLocal(modifier), Verdict::pass);
    registry.dispatchGlobal(modifier);
    EXPECT_EQ(called, "");
}

TEST_F(MonitorRegistryTest, AMonitorInstalledDuringADispatchWaitsForTheNextEvent) {
    std::ignore = registry.addLocal(keyDowns, [this](const InputEvent&) {
        local(keyDowns, 'n');
        return Verdict::pass;
    });
    std::ignore = registry.dispatchLocal(keyDown);
    EXPECT_EQ(called, "");
    std::ignore = registry.dispatchLocal(keyDown);
    EXPECT_EQ(called, "n");
}

TEST_F(MonitorRegistryTest, AMonitorRemovedDuringADispatchIsSkipped) {
    const auto older = local(keyDowns, 'a');
    std::ignore = registry.addLocal(keyDowns, [this, older](const InputEvent&) {
        registry.remove(older);
        return Verdict::pass;
    });
    std::ignore = registry.dispatchLocal(keyDown);
    EXPECT_EQ(called, "");
}

TEST_F(MonitorRegistryTest, GlobalMonitorsSeeEventsInTheOrderOfInstallation) {
    global(keyDowns, 'a');
    global(keyDowns, 'b');
    registry.dispatchGlobal(keyDown);
    EXPECT_EQ(called, "ab");
}

TEST_F(MonitorRegistryTest, AGlobalMonitorRemovedDuringADispatchIsSkipped) {
    MonitorToken second{};
    std::ignore = registry.addGlobal(keyDowns, [&](const InputEvent&) { registry.remove(second); });
    second = global(keyDowns, 'b');
    registry.dispatchGlobal(keyDown);
    EXPECT_EQ(called, "");
}

TEST_F(MonitorRegistryTest, LocalAndGlobalMonitorsAreApart) {
    local(keyDowns, 'l');
    global(keyDowns, 'g');
    std::ignore = registry.dispatchLocal(keyDown);
    EXPECT_EQ(called, "l");
    registry.dispatchGlobal(keyDown);
    EXPECT_EQ(called, "lg");
}

TEST_F(MonitorRegistryTest, RemovingTwiceDoesNothingAndTokensAreNotReused) {
    const auto first = local(keyDowns, 'a');
    registry.remove(first);
    registry.remove(first);
    const auto second = global(keyDowns, 'b');
    EXPECT_NE(first, second);
    registry.remove(first);
    EXPECT_EQ(registry.globalCount(), 1U);
    EXPECT_EQ(registry.localCount(), 0U);
}

TEST_F(MonitorRegistryTest, TheGlobalInterestIsTheUnionOfTheMasks) {
    EXPECT_EQ(registry.globalInterest(), 0U);
    const auto keys = global(keyDowns, 'a');
    global(maskOf(EventType::mouseMoved), 'b');
    local(maskOf(EventType::keyUp), 'c');
    EXPECT_EQ(registry.globalInterest(), keyDowns | maskOf(EventType::mouseMoved));
    registry.remove(keys);
    EXPECT_EQ(registry.globalInterest(), maskOf(EventType::mouseMoved));
}

} // namespace
} // namespace tapalong
