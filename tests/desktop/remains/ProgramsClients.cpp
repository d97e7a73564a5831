#include "desktop/remains/ProgramsClients.h"

#include "desktop/remains/Replies.h"

#include <xcb/res.h>

#include <span>

namespace tapalong::test {

ProgramsClients::ProgramsClients(xcb_connection_t* xcb, pid_t pid) : m_xcb(xcb) {
    (void)own(xcb_res_query_version_reply(xcb, xcb_res_query_version(xcb, 1, 2), nullptr));
    const xcb_res_client_id_spec_t anybody{.client = 0, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = own(xcb_res_query_client_ids_reply(xcb, xcb_res_query_client_ids(xcb, 1, &anybody), nullptr));
    if (!reply) {
        return;
    }
    auto each = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; each.rem > 0; xcb_res_client_id_value_next(&each)) {
        const auto* const value = xcb_res_client_id_value_value(each.data);
        if (each.data->length > 0 && static_cast<pid_t>(*value) == pid) {
            m_clients.push_back(each.data->spec.client);
        }
    }
}

std::map<std::string, unsigned> ProgramsClients::resources() const {
    std::map<std::string, unsigned> all;
    for (const auto client : m_clients) {
        for (const auto& [name, number] : resourcesOf(client)) {
            all[name] += number;
        }
    }
    all["connections"] = static_cast<unsigned>(m_clients.size());
    return all;
}

std::map<std::string, unsigned> ProgramsClients::resourcesOf(std::uint32_t client) const {
    std::map<std::string, unsigned> result;
    const auto reply =
        own(xcb_res_query_client_resources_reply(m_xcb, xcb_res_query_client_resources(m_xcb, client), nullptr));
    if (reply) {
        const std::span types(xcb_res_query_client_resources_types(reply.get()),
                              static_cast<std::size_t>(xcb_res_query_client_resources_types_length(reply.get())));
        for (const auto& type : types) {
            result[nameOf(type.resource_type)] += type.count;
        }
    }
    return result;
}

std::string ProgramsClients::nameOf(xcb_atom_t atom) const {
    const auto reply = own(xcb_get_atom_name_reply(m_xcb, xcb_get_atom_name(m_xcb, atom), nullptr));
    return reply ? std::string(xcb_get_atom_name_name(reply.get()),
                               static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())))
                 : std::to_string(atom);
}

} // namespace tapalong::test
