// The session manager of a desktop, as far as logging out goes, driven by lines on standard input:
//
//     log-out   asks every client to save what it has; each may ask the user something, and so cancel
//     die       tells every client to end
//
// and saying what its clients do by lines on standard output. The first line is the value for SESSION_MANAGER.

#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>

#include <poll.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>
#include <vector>

namespace {

std::vector<SmsConn> clients;
std::vector<IceConn> connections;

void say(const std::string& line) {
    std::cout << line << std::endl;
}

Status registerClient(SmsConn client, SmPointer, char* previousId) {
    if (previousId != nullptr) {
        std::free(previousId); // NOLINT(cppcoreguidelines-no-malloc): the library's own rule
        return 0;              // we remember nobody
    }
    char* id = SmsGenerateClientID(client);
    SmsRegisterClientReply(client, id);
    std::free(id); // NOLINT(cppcoreguidelines-no-malloc): the library's own rule
    clients.push_back(client);
    say("registered");
    // Every new client is asked once for what it has, so that it knows its own restart command.
    SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
    return 1;
}

void interactRequest(SmsConn client, SmPointer, int) {
    say("wants to ask");
    SmsInteract(client);
}

void interactDone(SmsConn client, SmPointer, Bool cancelled) {
    say(cancelled != False ? "cancelled the log-out" : "asked");
    if (cancelled != False) {
        SmsShutdownCancelled(client);
    }
}

void saveYourselfRequest(SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}

void phase2Request(SmsConn client, SmPointer) {
    SmsSaveYourselfPhase2(client);
}

void saveYourselfDone(SmsConn client, SmPointer, Bool success) {
    say(success != False ? "saved" : "did not save");
    SmsSaveComplete(client);
}

void closeConnection(SmsConn client, SmPointer, int count, char** reasons) {
    SmFreeReasons(count, reasons);
    std::erase(clients, client);
    auto* const connection = SmsGetIceConnection(client);
    SmsCleanUp(client);
    IceSetShutdownNegotiation(connection, False);
    IceCloseConnection(connection);
    say("left");
}

void setProperties(SmsConn, SmPointer, int count, SmProp** properties) {
    for (auto* each : std::span(properties, static_cast<std::size_t>(count))) {
        SmFreeProperty(each);
    }
    std::free(static_cast<void*>(properties)); // NOLINT(cppcoreguidelines-no-malloc): the library's own rule
}

void deleteProperties(SmsConn, SmPointer, int count, char** names) {
    for (auto* each : std::span(names, static_cast<std::size_t>(count))) {
        std::free(each); // NOLINT(cppcoreguidelines-no-malloc): the library's own rule
    }
    std::free(static_cast<void*>(names)); // NOLINT(cppcoreguidelines-no-malloc): the library's own rule
}

void getProperties(SmsConn client, SmPointer) {
    SmsReturnProperties(client, 0, nullptr);
}

Status newClient(SmsConn, SmPointer, unsigned long* mask, SmsCallbacks* callbacks, char**) {
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
            SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
            SmsGetPropertiesProcMask;
    callbacks->register_client.callback = registerClient;
    callbacks->interact_request.callback = interactRequest;
    callbacks->interact_done.callback = interactDone;
    callbacks->save_yourself_request.callback = saveYourselfRequest;
    callbacks->save_yourself_phase2_request.callback = phase2Request;
    callbacks->save_yourself_done.callback = saveYourselfDone;
    callbacks->close_connection.callback = closeConnection;
    callbacks->set_properties.callback = setProperties;
    callbacks->delete_properties.callback = deleteProperties;
    callbacks->get_properties.callback = getProperties;
    return 1;
}

// The display of a test is its own; whoever reaches it may connect.
Bool acceptEverybody(char*) {
    return True;
}

void connectionChanged(IceConn connection, IcePointer, Bool opening, IcePointer*) {
    if (opening != False) {
        connections.push_back(connection);
    } else {
        std::erase(connections, connection);
    }
}

// A client that is killed takes its connection with it; the library's own answer is to end the process.
void connectionBroke(IceConn connection) {
    std::erase_if(clients, [connection](SmsConn each) { return SmsGetIceConnection(each) == connection; });
    std::erase(connections, connection);
    say("lost");
}

void obey(const std::string& command) {
    for (auto* client : std::vector(clients)) {
        if (command == "log-out") {
            SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleAny, False);
        } else if (command == "die") {
            SmsDie(client);
        }
    }
}

void serve(std::span<IceListenObj> listeners) {
    while (true) {
        std::vector<pollfd> waits{{0, POLLIN, 0}};
        for (auto* each : listeners) {
            waits.push_back({IceGetListenConnectionNumber(each), POLLIN, 0});
        }
        const auto known = connections;
        for (auto* each : known) {
            waits.push_back({IceConnectionNumber(each), POLLIN, 0});
        }
        poll(waits.data(), waits.size(), -1);
        std::string command;
        if (waits[0].revents != 0) {
            if (!std::getline(std::cin, command)) {
                return;
            }
            obey(command);
        }
        for (std::size_t i = 0; i < listeners.size(); ++i) {
            if (IceAcceptStatus status{}; waits[1 + i].revents != 0) {
                IceAcceptConnection(listeners[i], &status);
            }
        }
        for (std::size_t i = 0; i < known.size(); ++i) {
            const bool isStillThere = std::find(connections.begin(), connections.end(), known[i]) != connections.end();
            if (waits[1 + listeners.size() + i].revents != 0 && isStillThere) {
                IceProcessMessages(known[i], nullptr, nullptr);
            }
        }
    }
}

} // namespace

int main() {
    std::array<char, 256> error{};
    const auto room = static_cast<int>(error.size());
    int count = 0;
    IceListenObj* listeners = nullptr;
    IceSetIOErrorHandler(connectionBroke);
    IceAddConnectionWatch(connectionChanged, nullptr);
    if (SmsInitialize("tests", "1", newClient, nullptr, acceptEverybody, room, error.data()) == 0 ||
        IceListenForConnections(&count, &listeners, room, error.data()) == 0) {
        std::cerr << error.data() << '\n';
        return EXIT_FAILURE;
    }
    const std::span all(listeners, static_cast<std::size_t>(count));
    for (auto* each : all) {
        IceSetHostBasedAuthProc(each, acceptEverybody);
    }
    char* const addresses = IceComposeNetworkIdList(count, listeners);
    say(addresses);
    std::free(addresses); // NOLINT(cppcoreguidelines-no-malloc): the library's own rule
    serve(all);
    IceFreeListenObjs(count, listeners);
    return EXIT_SUCCESS;
}
