#pragma once

#include "base/Observable.h"

#include <string>
#include <vector>

namespace tapalong {

/// Troubles of the desktop that the parent should read in the settings window: a full disk, a damaged settings file,
/// a desktop on which Lockdown Mode is not available. Each is one whole sentence; the list changes as they come and
/// go, announced before each change.
class Notices : public ObservableObject {
public:
    virtual ~Notices() = default;

    [[nodiscard]] virtual std::vector<std::string> notices() const = 0;
};

} // namespace tapalong
