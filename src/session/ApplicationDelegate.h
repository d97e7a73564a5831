#pragma once

namespace tapalong {

/// What the rest of the program asks of the application delegate.
class ApplicationDelegate {
public:
    ApplicationDelegate() = default;
    ApplicationDelegate(const ApplicationDelegate&) = delete;
    ApplicationDelegate& operator=(const ApplicationDelegate&) = delete;

    /// Null until the application has finished launching.
    [[nodiscard]] static ApplicationDelegate* shared() { return s_shared; }
    static void setShared(ApplicationDelegate* delegate) { s_shared = delegate; }

    virtual void registerGlobalShortcut() = 0;
    virtual void showSessionWindow() = 0;
    virtual void dismissSessionWindow() = 0;

protected:
    ~ApplicationDelegate() = default;

private:
    inline static ApplicationDelegate* s_shared = nullptr;
};

} // namespace tapalong
