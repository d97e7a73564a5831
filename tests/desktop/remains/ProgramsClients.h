#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tapalong::test {

/// The connections of one process to the X server, by the server's own books (its X-Resource extension).
class ProgramsClients {
public:
    ProgramsClients(xcb_connection_t* xcb, pid_t pid);

    /// What the server keeps for the process: how many of each type, over all its connections.
    [[nodiscard]] std::map<std::string, unsigned> resources() const;

private:
    [[nodiscard]] std::map<std::string, unsigned> resourcesOf(std::uint32_t client) const;
    [[nodiscard]] std::string nameOf(xcb_atom_t atom) const;

    xcb_connection_t* m_xcb;
    std::vector<std::uint32_t> m_clients; ///< the first of each connection's numbers for resources
};

} // namespace tapalong::test
