#pragma once

namespace tapalong {

/// Keeps the desktop's services from ending the user's session, from switching to another user, and from answering the
/// computer's own power keys. What could not be had stays undone without a word; nothing of it outlives the process.
/// Both calls return at once and may be repeated.
class TerminationGuard {
public:
    virtual ~TerminationGuard() = default;

    virtual void hold() = 0;
    virtual void release() = 0;
};

} // namespace tapalong
