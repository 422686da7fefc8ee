#!/usr/bin/python3
"""A Bluetooth service with one adapter and one headset, on the bus of DBUS_SYSTEM_BUS_ADDRESS.

It does what a sound server needs of the real one: the headset plays music (A2DP) and takes calls
(hands-free), and has volume buttons. It says "ready", then takes commands on standard input and
answers one line each, the headset's state:

    connect | disconnect | volume 0..127 (its buttons, for music) | gain 0..15 (for calls) | state
"""

import functools
import os
import socket
import sys

import dbus
import dbus.bus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

ADAPTER = "/org/bluez/hci0"
HEADSET = ADAPTER + "/dev_AA_BB_CC_DD_EE_01"
MANAGER = "org.freedesktop.DBus.ObjectManager"
PROPERTIES = "org.freedesktop.DBus.Properties"
DEVICE = "org.bluez.Device1"
ENDPOINT = "org.bluez.MediaEndpoint1"
TRANSPORT = "org.bluez.MediaTransport1"
MEDIA = "org.bluez.Media1"
PROFILES = "org.bluez.ProfileManager1"

SOURCE, SINK, HANDS_FREE, GATEWAY = (
    f"0000{number}-0000-1000-8000-00805f9b34fb" for number in ("110a", "110b", "111e", "111f"))
SBC = 0
# Every sampling rate, mode and block length, bit pools from 2 to 53.
SBC_CAPABILITIES = dbus.Array([dbus.Byte(byte) for byte in (0xff, 0xff, 2, 53)], signature="y")
PACKET_BYTES = 672


class Bluez:
    """The connection, what is published on it, and who registered with it."""

    def __init__(self):
        self.bus = dbus.bus.BusConnection(os.environ["DBUS_SYSTEM_BUS_ADDRESS"])
        self.objects = {}
        self.endpoints = []  # (bus name, path of the application's object manager)
        self.gateway = None  # (bus name, path) of whoever takes calls
        self.root = Root(self)
        Service(self, "/org/bluez", {PROFILES: {}})
        Adapter(self, ADAPTER, {
            "org.bluez.Adapter1": {
                "Address": "00:11:22:33:44:55", "AddressType": "public", "Name": "adapter",
                "Alias": "adapter", "Class": dbus.UInt32(0x1c0104), "Powered": True,
                "Discoverable": False, "Pairable": True, "Discovering": False,
                "UUIDs": texts([SOURCE, SINK, HANDS_FREE, GATEWAY])},
            MEDIA: {"SupportedUUIDs": texts([SOURCE, SINK])}})
        self.headset = Headset(self)
        self.bus.add_signal_receiver(
            self.owner_changed, "NameOwnerChanged", "org.freedesktop.DBus",
            "org.freedesktop.DBus", "/org/freedesktop/DBus")
        self.bus.request_name("org.bluez")

    def remote(self, name, path, interface):
        return dbus.Interface(self.bus.get_object(name, path, introspect=False), interface)

    def owner_changed(self, name, old, new):
        if old and not new:
            self.endpoints = [each for each in self.endpoints if each[0] != name]
            if self.gateway and self.gateway[0] == name:
                self.gateway = None
            self.headset.forget(name)


def texts(values):
    return dbus.Array(values, signature="s")


def variants(values):
    return dbus.Dictionary(values, signature="sv")


def ignore(*_answer):
    """An answer that changes nothing; a server that ends fails the call."""


class Published(dbus.service.Object):
    """An object with properties, listed by the object manager while it lives."""

    def __init__(self, bluez, path, interfaces):
        super().__init__(bluez.bus, path)
        self.bluez, self.path, self.interfaces = bluez, path, interfaces
        bluez.objects[path] = self
        bluez.root.InterfacesAdded(
            dbus.ObjectPath(path), {name: variants(held) for name, held in interfaces.items()})

    def withdraw(self):
        self.bluez.root.InterfacesRemoved(dbus.ObjectPath(self.path), list(self.interfaces))
        self.remove_from_connection()
        del self.bluez.objects[self.path]

    def change(self, interface, name, value):
        self.interfaces[interface][name] = value
        self.PropertiesChanged(interface, {name: value}, [])

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.interfaces[interface][name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return self.interfaces.get(interface, {})

    @dbus.service.method(PROPERTIES, in_signature="ssv")
    def Set(self, interface, name, value):
        self.change(interface, name, value)

    @dbus.service.signal(PROPERTIES, signature="sa{sv}as")
    def PropertiesChanged(self, interface, changed, invalidated):
        pass


class Root(dbus.service.Object):
    def __init__(self, bluez):
        super().__init__(bluez.bus, "/")
        self.bluez = bluez

    @dbus.service.method(MANAGER, out_signature="a{oa{sa{sv}}}")
    def GetManagedObjects(self):
        return dbus.Dictionary(
            {dbus.ObjectPath(path): dbus.Dictionary(
                {name: variants(held) for name, held in each.interfaces.items()},
                signature="sa{sv}") for path, each in self.bluez.objects.items()},
            signature="oa{sa{sv}}")

    @dbus.service.signal(MANAGER, signature="oa{sa{sv}}")
    def InterfacesAdded(self, path, interfaces):
        pass

    @dbus.service.signal(MANAGER, signature="oas")
    def InterfacesRemoved(self, path, interfaces):
        pass


class Service(Published):
    @dbus.service.method(PROFILES, in_signature="osa{sv}", sender_keyword="sender")
    def RegisterProfile(self, path, uuid, options, sender=None):
        if uuid == GATEWAY:
            self.bluez.gateway = (sender, path)
            GLib.idle_add(self.bluez.headset.offer_calls)

    @dbus.service.method(PROFILES, in_signature="o")
    def UnregisterProfile(self, path):
        if self.bluez.gateway and self.bluez.gateway[1] == path:
            self.bluez.gateway = None


class Adapter(Published):
    @dbus.service.method(MEDIA, in_signature="oa{sv}", sender_keyword="sender")
    def RegisterApplication(self, path, options, sender=None):
        self.bluez.endpoints.append((sender, path))
        GLib.idle_add(self.bluez.headset.offer_music)

    @dbus.service.method(MEDIA, in_signature="o")
    def UnregisterApplication(self, path):
        pass

    @dbus.service.method(MEDIA, in_signature="oa{sv}")
    def RegisterPlayer(self, path, properties):
        pass

    @dbus.service.method(MEDIA, in_signature="o")
    def UnregisterPlayer(self, path):
        pass


class RemoteEndpoint(Published):
    """The headset's end of A2DP, where a server chooses another configuration."""

    @dbus.service.method(ENDPOINT, in_signature="oa{sv}", sender_keyword="sender")
    def SetConfiguration(self, endpoint, properties, sender=None):
        configuration = properties["Capabilities"]
        GLib.idle_add(lambda: self.bluez.headset.configure(sender, endpoint, configuration))


class Transport(Published):
    """The way of the music from the server, to a headset that throws it away."""

    def __init__(self, bluez, path, owner, configuration):
        self.owner, self.stream, self.watch = owner, None, 0
        super().__init__(bluez, path, {TRANSPORT: {
            "Device": dbus.ObjectPath(HEADSET), "UUID": SOURCE, "Codec": dbus.Byte(SBC),
            "Configuration": configuration, "State": "idle", "Delay": dbus.UInt16(1500),
            "Volume": dbus.UInt16(40), "Endpoint": dbus.ObjectPath(HEADSET + "/sep1")}})

    def withdraw(self):
        self.close()
        super().withdraw()

    def close(self):
        if self.watch:
            GLib.source_remove(self.watch)
            self.watch = 0
        if self.stream:
            self.stream.close()
            self.stream = None

    def swallow(self, _descriptor, _condition):
        try:
            while self.stream.recv(65536):
                pass
        except BlockingIOError:
            return True
        except OSError:
            pass
        self.watch = 0
        return False

    @dbus.service.method(TRANSPORT, out_signature="hqq")
    def Acquire(self):
        self.close()
        theirs, self.stream = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        self.stream.setblocking(False)
        self.watch = GLib.io_add_watch(
            self.stream.fileno(), GLib.IO_IN | GLib.IO_HUP | GLib.IO_ERR, self.swallow)
        GLib.idle_add(lambda: self.change(TRANSPORT, "State", "active"))
        with theirs:
            return (dbus.types.UnixFd(theirs), dbus.UInt16(PACKET_BYTES),
                    dbus.UInt16(PACKET_BYTES))

    @dbus.service.method(TRANSPORT, out_signature="hqq")
    def TryAcquire(self):
        raise dbus.exceptions.DBusException(
            "nothing is played to us", name="org.bluez.Error.NotAvailable")

    @dbus.service.method(TRANSPORT)
    def Release(self):
        self.close()
        GLib.idle_add(lambda: self.change(TRANSPORT, "State", "idle"))


class Calls:
    """The headset's end of the hands-free profile: the dialogue that opens it, and its gain."""

    # Feature 16 is the volume on the headset.
    OPENING = ("AT+BRSF=16", "AT+CIND=?", "AT+CIND?", "AT+CMER=3,0,0,1", "AT+VGS=9")

    def __init__(self, bluez, owner, path):
        self.owner, self.gain, self.heard, self.left = owner, 9, "", list(self.OPENING)
        theirs, self.line = socket.socketpair(socket.AF_UNIX, socket.SOCK_STREAM)
        self.line.setblocking(False)
        self.watch = GLib.io_add_watch(
            self.line.fileno(), GLib.IO_IN | GLib.IO_HUP | GLib.IO_ERR, self.listen)
        with theirs:
            bluez.remote(owner, path, "org.bluez.Profile1").NewConnection(
                dbus.ObjectPath(HEADSET), dbus.types.UnixFd(theirs), variants({}),
                signature="oha{sv}", reply_handler=self.say_next, error_handler=self.close)

    def say_next(self, *_answer):
        if self.left and self.line:
            self.say(self.left.pop(0))

    def say(self, command):
        self.line.send((command + "\r").encode())

    def listen(self, _descriptor, _condition):
        try:
            said = self.line.recv(4096).decode(errors="replace")
        except BlockingIOError:
            return True
        except OSError:
            said = ""
        if not said:
            self.watch = 0
            self.close()
            return False
        self.heard += said
        *lines, self.heard = self.heard.split("\r\n")
        for line in lines:
            if line.startswith("+VGS"):
                self.gain = int(line.split("=" if "=" in line else ":")[1])
            elif line in ("OK", "ERROR"):
                self.say_next()
        return True

    def close(self, *_error):
        if self.watch:
            GLib.source_remove(self.watch)
            self.watch = 0
        if self.line:
            self.line.close()
            self.line = None


class Headset(Published):
    def __init__(self, bluez):
        self.transport, self.calls, self.transports = None, None, 0
        super().__init__(bluez, HEADSET, {DEVICE: {
            "Address": "AA:BB:CC:DD:EE:01", "AddressType": "public", "Name": "Headset",
            "Alias": "Headset", "Class": dbus.UInt32(0x240404), "Icon": "audio-headset",
            "Paired": True, "Bonded": True, "Trusted": True, "Blocked": False,
            "LegacyPairing": False, "Connected": False, "ServicesResolved": True,
            "UUIDs": texts([SINK, HANDS_FREE]), "Adapter": dbus.ObjectPath(ADAPTER)}})
        RemoteEndpoint(bluez, HEADSET + "/sep1", {ENDPOINT: {
            "UUID": SINK, "Codec": dbus.Byte(SBC), "Capabilities": SBC_CAPABILITIES,
            "Device": dbus.ObjectPath(HEADSET), "DelayReporting": False}})

    @property
    def connected(self):
        return self.interfaces[DEVICE]["Connected"]

    def connect(self):
        self.change(DEVICE, "Connected", True)
        self.offer_music()
        self.offer_calls()

    def disconnect(self):
        if self.calls:
            self.calls.close()
            self.calls = None
        self.drop_transport()
        self.change(DEVICE, "Connected", False)

    def forget(self, name):
        """Whoever had that name on the bus has ended."""
        if self.transport and self.transport.owner[0] == name:
            self.transport.withdraw()
            self.transport = None
        if self.calls and self.calls.owner == name:
            self.calls.close()
            self.calls = None

    # Nothing here waits for the server's answer: it may be waiting for one of this program's own,
    # as PulseAudio does while it acquires or releases a transport.

    def offer_music(self):
        if not self.connected or self.transport:
            return
        for name, application in self.bluez.endpoints:
            self.bluez.remote(name, application, MANAGER).GetManagedObjects(
                reply_handler=functools.partial(self.choose_endpoint, name),
                error_handler=ignore)

    def choose_endpoint(self, name, objects):
        for path, interfaces in objects.items():
            endpoint = interfaces.get(ENDPOINT)
            if endpoint and endpoint["UUID"] == SOURCE and endpoint["Codec"] == SBC:
                self.bluez.remote(name, path, ENDPOINT).SelectConfiguration(
                    SBC_CAPABILITIES, signature="ay",
                    reply_handler=functools.partial(self.take_configuration, name, path),
                    error_handler=ignore)
                return

    def take_configuration(self, name, endpoint, chosen):
        if self.connected and not self.transport:
            self.configure(name, endpoint, chosen)

    def configure(self, name, endpoint, configuration):
        self.drop_transport()
        self.transports += 1
        self.transport = Transport(
            self.bluez, f"{HEADSET}/fd{self.transports}", (name, endpoint), configuration)
        self.bluez.remote(name, endpoint, ENDPOINT).SetConfiguration(
            dbus.ObjectPath(self.transport.path),
            variants(self.transport.interfaces[TRANSPORT]),
            reply_handler=ignore, error_handler=ignore)

    def drop_transport(self):
        if not self.transport:
            return
        dropped, self.transport = self.transport, None
        dropped.close()
        self.bluez.remote(*dropped.owner, ENDPOINT).ClearConfiguration(
            dbus.ObjectPath(dropped.path), reply_handler=ignore, error_handler=ignore)
        dropped.withdraw()

    def offer_calls(self):
        if self.connected and not self.calls and self.bluez.gateway:
            self.calls = Calls(self.bluez, *self.bluez.gateway)

    @dbus.service.method(DEVICE, in_signature="s")
    def ConnectProfile(self, uuid):
        GLib.idle_add(self.offer_music if uuid == SINK else self.offer_calls)

    @dbus.service.method(DEVICE, in_signature="s")
    def DisconnectProfile(self, uuid):
        pass

    def state(self):
        music = self.transport.interfaces[TRANSPORT] if self.transport else {}
        return " ".join([
            "connected" if self.connected else "disconnected",
            "music=" + music.get("State", "none"), f"volume={int(music.get('Volume', -1))}",
            f"gain={self.calls.gain if self.calls else -1}"])


def obey(headset, words):
    if words == ["connect"]:
        headset.connect()
    elif words == ["disconnect"]:
        headset.disconnect()
    elif words[0] == "volume" and headset.transport:
        headset.transport.change(TRANSPORT, "Volume", dbus.UInt16(int(words[1])))
    elif words[0] == "gain" and headset.calls:
        headset.calls.gain = int(words[1])
        headset.calls.say("AT+VGS=" + words[1])
    elif words != ["state"]:
        return "error: " + " ".join(words)
    return headset.state()


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bluez = Bluez()
    loop = GLib.MainLoop()

    def take_line(_descriptor, _condition):
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return False
        print(obey(bluez.headset, line.split()), flush=True)
        return True

    GLib.io_add_watch(sys.stdin.fileno(), GLib.IO_IN | GLib.IO_HUP, take_line)
    print("ready", flush=True)
    loop.run()


if __name__ == "__main__":
    main()
