#include "base/Observable.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace tapalong {
namespace {

struct Model final : ObservableObject {
    Published<int> number{*this, 1};
};

TEST(Observable, ObserversAreToldBeforeTheValueChanges) {
    Model model;
    int seen = 0;
    const auto subscription = model.objectWillChange([&] { seen = model.number.get(); });
    model.number.set(2);
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(model.number.get(), 2);
}

TEST(Observable, ObserversAreCalledInTheOrderOfSubscription) {
    Model model;
    std::string called;
    const auto first = model.objectWillChange([&] { called += 'a'; });
    const auto second = model.objectWillChange([&] { called += 'b'; });
    model.number.set(2);
    EXPECT_EQ(called, "ab");
}

TEST(Observable, SettingTheSameValueIsAnnouncedToo) {
    Model model;
    int calls = 0;
    const auto subscription = model.objectWillChange([&] { ++calls; });
    model.number.set(1);
    EXPECT_EQ(calls, 1);
}

TEST(Observable, AChangeInPlaceIsAnnouncedOnceAndBefore) {
    Model model;
    std::vector<int> seen;
    const auto subscription = model.objectWillChange([&] { seen.push_back(model.number.get()); });
    model.number.mutate([](int& number) {
        number += 1;
        number *= 10;
    });
    EXPECT_EQ(seen, std::vector<int>{1});
    EXPECT_EQ(model.number.get(), 20);
}

TEST(Observable, AnEndedSubscriptionIsCalledNoMore) {
    Model model;
    int calls = 0;
    auto subscription = model.objectWillChange([&] { ++calls; });
    model.number.set(2);
    subscription = {};
    model.number.set(3);
    EXPECT_EQ(calls, 1);
}

TEST(Observable, ASubscriptionThatEndsMeanwhileIsSkipped) {
    Model model;
    int calls = 0;
    Subscription second;
    const auto first = model.objectWillChange([&] { second = {}; });
    second = model.objectWillChange([&] { ++calls; });
    model.number.set(2);
    EXPECT_EQ(calls, 0);
}

TEST(Observable, OneWhoSubscribesMeanwhileWaitsForTheNextChange) {
    Model model;
    int calls = 0;
    std::optional<Subscription> late;
    const auto first = model.objectWillChange([&] {
        if (!late) {
            late = model.objectWillChange([&] { ++calls; });
        }
    });
    model.number.set(2);
    EXPECT_EQ(calls, 0);
    model.number.set(3);
    EXPECT_EQ(calls, 1);
}

TEST(Observable, ASubscriptionMayOutliveWhatItObserves) {
    auto model = std::make_unique<Model>();
    int calls = 0;
    const auto subscription = model->objectWillChange([&] { ++calls; });
    model.reset();
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace tapalong
