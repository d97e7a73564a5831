#pragma once

#include "platform/InputEvent.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tapalong {

enum class TapHandle : std::uint64_t {};
enum class RunLoopSource : std::uint64_t {};

enum class TapLocation : std::uint32_t { session = 1 };
enum class TapPlacement : std::uint32_t { headInsert = 0 };
enum class TapOptions : std::uint32_t { activeFilter = 0 };

/// Interception of the whole login session's input, ahead of every application.
///
/// A tap takes effect only while it is both enabled and its source is on the run loop. Its callback runs on the main
/// thread. When the system takes the tap away the callback is told with tapDisabledByTimeout or
/// tapDisabledByUserInput, and the tap is disabled until it is enabled again.
///
/// Which events a tap is handed is the platform's affair: what is typed into a focused secure field of our own key
/// window goes to that field alone, never to a tap.
class EventTaps {
public:
    using Callback = std::function<Verdict(const InputEvent&)>;

    virtual ~EventTaps() = default;

    /// None when the keyboard cannot be had: no permission, or another program holds it.
    [[nodiscard]] virtual std::optional<TapHandle> createTap(TapLocation location, TapPlacement placement,
                                                             TapOptions options, EventMask eventsOfInterest,
                                                             Callback callback) = 0;
    /// The keyboard may be refused to a tap that is enabled again: it then stays disabled, and the callback is told so
    /// as of any other loss, again and again until it can be had.
    virtual void enableTap(TapHandle tap, bool enable) = 0;
    /// Whether nothing can get past it: false too while some of the keyboard cannot be had, though the rest is, and for
    /// a handle that means nothing. What the callback is told of a loss is also the news that this may have changed.
    [[nodiscard]] virtual bool isTapEnabled(TapHandle tap) const = 0;

    [[nodiscard]] virtual RunLoopSource createRunLoopSource(TapHandle tap) = 0;
    virtual void addSource(RunLoopSource source) = 0;

    /// Also releases the tap behind the source: its handle means nothing any more.
    virtual void removeSource(RunLoopSource source) = 0;
};

} // namespace tapalong
