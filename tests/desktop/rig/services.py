#!/usr/bin/python3
"""Stand-ins for the services that can end a user's session, on the buses that the environment names.

Each inhibitor is one line on standard output when it begins and one when it ends, by whatever end: `+ session 3` for
the session manager's flags, `+ portal 3` for the portal's, `+ login handle-power-key` for the login service's words,
the same with a minus after it.
A word given as an argument is refused by the login service.
"""
import itertools
import os
import sys

from gi.repository import Gio, GLib

INTERFACES = Gio.DBusNodeInfo.new_for_xml("""<node>
<interface name="org.gnome.SessionManager">
  <method name="Inhibit"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="u" direction="in"/><arg type="u" direction="out"/></method>
  <method name="Uninhibit"><arg type="u" direction="in"/></method>
</interface>
<interface name="org.freedesktop.portal.Inhibit">
  <method name="Inhibit"><arg type="s" direction="in"/><arg type="u" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
</interface>
<interface name="org.freedesktop.portal.Request"><method name="Close"/></interface>
<interface name="org.freedesktop.login1.Manager">
  <method name="Inhibit"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="h" direction="out"/></method>
</interface></node>""")

refused = set(sys.argv[1:])
numbers = itertools.count(1)
requests = {}  # path -> the number under which it is registered
held = {}  # on the session bus: cookie or path -> (who, service, flags)


def say(sign, service, what):
    print(sign, service, what, flush=True)


def hold(handle, who, service, flags):
    held[handle] = (who, service, flags)
    say("+", service, flags)


def let_go(handle):
    _, service, flags = held.pop(handle)
    say("-", service, flags)


def session_call(_bus, sender, _path, _interface, method, arguments, invocation):
    if method == "Inhibit":
        cookie = next(numbers)
        hold(cookie, sender, "session", arguments[3])
        invocation.return_value(GLib.Variant("(u)", (cookie,)))
    else:
        let_go(arguments[0])
        invocation.return_value(None)


def portal_call(bus, sender, _path, _interface, _method, arguments, invocation):
    path = f"/org/freedesktop/portal/desktop/request/{next(numbers)}"
    requests[path] = bus.register_object(path, INTERFACES.lookup_interface("org.freedesktop.portal.Request"),
                                         request_call, None, None)
    hold(path, sender, "portal", arguments[1])
    invocation.return_value(GLib.Variant("(o)", (path,)))


def request_call(bus, _sender, path, _interface, _method, _arguments, invocation):
    let_go(path)
    invocation.return_value(None)
    bus.unregister_object(requests.pop(path))


def name_changed(_bus, _sender, _path, _interface, _signal, arguments):
    name, _, new_owner = arguments
    if not new_owner:
        for handle in [key for key, (who, *_) in held.items() if who == name]:
            let_go(handle)


def login_call(_bus, _sender, _path, _interface, _method, arguments, invocation):
    what = arguments[0]
    if what in refused:
        invocation.return_dbus_error("org.freedesktop.DBus.Error.AccessDenied", "refused")
        return
    read_end, write_end = os.pipe()
    say("+", "login", what)

    def closed(_fd, _condition):
        os.close(read_end)
        say("-", "login", what)
        return GLib.SOURCE_REMOVE
    GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, read_end, GLib.IOCondition.HUP, closed)
    files = Gio.UnixFDList.new()
    files.append(write_end)
    os.close(write_end)
    invocation.return_value_with_unix_fd_list(GLib.Variant("(h)", (0,)), files)


def serve(kind, name, path, interface, call):
    bus = Gio.bus_get_sync(kind)
    bus.register_object(path, INTERFACES.lookup_interface(interface), call, None, None)
    Gio.bus_own_name_on_connection(bus, name, Gio.BusNameOwnerFlags.NONE, None, None)
    return bus


session = serve(Gio.BusType.SESSION, "org.gnome.SessionManager", "/org/gnome/SessionManager",
                "org.gnome.SessionManager", session_call)
session.signal_subscribe("org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", None, None,
                         Gio.DBusSignalFlags.NONE, name_changed)
serve(Gio.BusType.SESSION, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
      "org.freedesktop.portal.Inhibit", portal_call)
serve(Gio.BusType.SYSTEM, "org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
      login_call)
print("ready", flush=True)
GLib.MainLoop().run()
