// Preloaded into the program under test, which knows nothing of it. A desktop learns of what a program does by what
// leaves the program's sockets and by nothing else: so a death before each of these calls in turn is a death at every
// step that the desktop can tell from another.

#include "desktop/remains/FaultPoint.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <string_view>

extern "C" void* __libc_malloc(std::size_t size); // NOLINT: the C library's name for its own malloc()

namespace tapalong::test {
namespace {

char* volatile nowhere = nullptr;

FaultPoint* mapSharedPage() {
    const char* const path = std::getenv("TAPALONG_FAULT_POINT");
    const int file = path != nullptr ? open(path, O_RDWR | O_CLOEXEC) : -1;
    if (file < 0) {
        return nullptr;
    }
    void* const page = mmap(nullptr, sizeof(FaultPoint), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (page == MAP_FAILED) {
        return nullptr;
    }
    auto* const point = static_cast<FaultPoint*>(page);
    std::uint32_t nobody = 0;
    point->pid.compare_exchange_strong(nobody, static_cast<std::uint32_t>(getpid()));
    return point;
}

bool isSocket(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 && S_ISSOCK(status.st_mode);
}

void takeAll(std::size_t size) {
    while (__libc_malloc(size) != nullptr) {
    }
}

/// Takes all memory that can be had, each small size by itself because the allocator keeps some of each ready. What
/// refuses it is then asked by the program: the plain malloc() is the program's own here.
void starve() {
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = 1;
    setrlimit(RLIMIT_AS, &limit);
    constexpr std::size_t largestKept = 1040;
    for (std::size_t size = std::size_t{1} << 26U; size > largestKept; size /= 2) {
        takeAll(size);
    }
    for (std::size_t size = largestKept; size > 0; size -= 16) {
        takeAll(size);
    }
}

bool leadsToServer(int file) {
    sockaddr_un peer{};
    socklen_t size = sizeof(peer);
    if (getpeername(file, reinterpret_cast<sockaddr*>(&peer), &size) != 0 || peer.sun_family != AF_UNIX) {
        return false;
    }
    // Names of the abstract kind begin with a null character.
    const std::string_view path(peer.sun_path, sizeof(peer.sun_path));
    return path.find("/.X11-unix/X") != std::string_view::npos;
}

/// Breaks a connection to the X server, for both sides. Counted by their order, from 0.
void cut(int number) {
    constexpr int filesOfOurs = 256;
    for (int file = 0; file < filesOfOurs; ++file) {
        if (leadsToServer(file) && number-- == 0) {
            shutdown(file, SHUT_RDWR);
        }
    }
}

/// What the program has asked for and not given back.
std::uint32_t allocatedBytes() {
    const auto memory = mallinfo2();
    return static_cast<std::uint32_t>(memory.uordblks + memory.hblkhd);
}

std::uint32_t milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(now.tv_sec * 1000 + now.tv_nsec / 1'000'000);
}

void happen(FaultPoint& point) {
    using Kind = FaultPoint::Kind;
    point.reachedAt = milliseconds();
    point.reached = 1;
    switch (point.kind) {
    case Kind::none:
        break;
    case Kind::killed:
        kill(getpid(), SIGKILL);
        break;
    case Kind::brokenMemory:
        *nowhere = 0; // NOLINT: broken on purpose
        break;
    case Kind::stopped:
        kill(getpid(), SIGSTOP);
        break;
    case Kind::toolkitIsCut:
        cut(0);
        break;
    case Kind::weAreCut:
        cut(1);
        break;
    case Kind::starved:
        starve();
        break;
    case Kind::asksToTerminate:
        kill(getpid(), SIGTERM);
        break;
    case Kind::asksToInterrupt:
        kill(getpid(), SIGINT);
        break;
    case Kind::asksToHangUp:
        kill(getpid(), SIGHUP);
        break;
    case Kind::measured:
        point.allocated = allocatedBytes();
        break;
    }
}

void beforeCall(int file) {
    static FaultPoint* const point = mapSharedPage();
    const bool counts = point != nullptr && point->pid == static_cast<std::uint32_t>(getpid()) && isSocket(file);
    if (!counts) {
        return;
    }
    const std::uint32_t number = ++point->count;
    if (number == point->at) {
        happen(*point);
    }
}

template <class Function> Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace
} // namespace tapalong::test

using tapalong::test::beforeCall;
using tapalong::test::next;

// Under names of our own, as the C library's declarations stand; the linker knows them by the names that they replace.
extern "C" {

ssize_t countedWrite(int file, const void* bytes, size_t size) asm("write");
ssize_t countedWritev(int file, const iovec* parts, int count) asm("writev");
ssize_t countedSend(int file, const void* bytes, size_t size, int flags) asm("send");
ssize_t countedSendmsg(int file, const msghdr* message, int flags) asm("sendmsg");

} // extern "C"

ssize_t countedWrite(int file, const void* bytes, size_t size) {
    static const auto real = next<decltype(&countedWrite)>("write");
    beforeCall(file);
    return real(file, bytes, size);
}

ssize_t countedWritev(int file, const iovec* parts, int count) {
    static const auto real = next<decltype(&countedWritev)>("writev");
    beforeCall(file);
    return real(file, parts, count);
}

ssize_t countedSend(int file, const void* bytes, size_t size, int flags) {
    static const auto real = next<decltype(&countedSend)>("send");
    beforeCall(file);
    return real(file, bytes, size, flags);
}

ssize_t countedSendmsg(int file, const msghdr* message, int flags) {
    static const auto real = next<decltype(&countedSendmsg)>("sendmsg");
    beforeCall(file);
    return real(file, message, flags);
}
