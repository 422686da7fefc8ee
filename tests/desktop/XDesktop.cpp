#include "tests/desktop/XDesktop.hpp"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>

#include <cstdint>
#include <stdexcept>

namespace test {
namespace {

XConnection connect(const std::string& displayName) {
    XConnection display(XOpenDisplay(displayName.c_str()));
    if (!display) throw std::runtime_error("no X server at '" + displayName + "'");
    return display;
}

/// A window that is never shown, as owners of selections have.
Window hiddenWindow(Display* display) {
    return XCreateSimpleWindow(display, DefaultRootWindow(display), -1, -1, 1, 1, 0, 0, 0);
}

Window becomeOwner(Display* display, const char* selection) {
    const Window owner = hiddenWindow(display);
    XSetSelectionOwner(display, XInternAtom(display, selection, False), owner, CurrentTime);
    XSync(display, False);
    return owner;
}

/// The settings protocol's serialisation, least significant byte first.
class Serialised {
 public:
    void byte(unsigned value) { bytes_ += static_cast<char>(value); }
    void number(std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            byte(value >> (8 * i) & 0xFFU);
    }
    void text(const std::string& value) {
        bytes_ += value;
        bytes_.append((4 - value.size() % 4) % 4, '\0');
    }
    const std::string& bytes() const { return bytes_; }

 private:
    std::string bytes_;
};

}  // namespace

void XClose::operator()(Display* display) const {
    XCloseDisplay(display);
}

PaintWatch::PaintWatch(const std::string& displayName, unsigned long window)
    : display_(connect(displayName)) {
    int firstError = 0;
    if (XDamageQueryExtension(display_.get(), &damageEvent_, &firstError) == False)
        throw std::runtime_error("the X server does not tell what is painted");
    XDamageCreate(display_.get(), window, XDamageReportRawRectangles);
    take();  // All that was painted before.
}

std::vector<CGRect> PaintWatch::take() {
    std::vector<CGRect> painted;
    XSync(display_.get(), False);
    while (XPending(display_.get()) > 0) {
        XEvent event;
        XNextEvent(display_.get(), &event);
        if (event.type != damageEvent_ + XDamageNotify) continue;
        const auto& notified = reinterpret_cast<const XDamageNotifyEvent&>(event);
        const XRectangle& area = notified.area;
        painted.push_back(CGRectMake(area.x, area.y, area.width, area.height));
    }
    return painted;
}

WindowManager::WindowManager(const std::string& displayName) : display_(connect(displayName)) {
    Display* display = display_.get();
    const Window root = DefaultRootWindow(display);
    const Window own = hiddenWindow(display);
    const auto setProperty = [display](Window window, const char* name, Atom type,
                                       unsigned long value) {
        XChangeProperty(display, window, XInternAtom(display, name, False), type, 32,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(&value), 1);
    };
    setProperty(root, "_NET_SUPPORTED", XA_ATOM, XInternAtom(display, "_GTK_FRAME_EXTENTS", False));
    for (const Window window : {root, own})
        setProperty(window, "_NET_SUPPORTING_WM_CHECK", XA_WINDOW, own);
    XSync(display, False);
}

Compositor::Compositor(const std::string& displayName) : display_(connect(displayName)) {
    becomeOwner(display_.get(), "_NET_WM_CM_S0");
}

SettingsManager::SettingsManager(const std::string& displayName)
    : display_(connect(displayName)), window_(becomeOwner(display_.get(), "_XSETTINGS_S0")) {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = DefaultRootWindow(display_.get());
    event.xclient.message_type = XInternAtom(display_.get(), "MANAGER", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = CurrentTime;
    event.xclient.data.l[1] =
        static_cast<long>(XInternAtom(display_.get(), "_XSETTINGS_S0", False));
    event.xclient.data.l[2] = static_cast<long>(window_);
    XSendEvent(display_.get(), event.xclient.window, False, StructureNotifyMask, &event);
    XSync(display_.get(), False);
}

void SettingsManager::set(const std::map<std::string, int>& settings) {
    Serialised bytes;
    bytes.number(LSBFirst, 4);
    bytes.number(++serial_, 4);
    bytes.number(static_cast<std::uint32_t>(settings.size()), 4);
    for (const auto& [name, value] : settings) {
        bytes.number(0, 2);  // An integer.
        bytes.number(static_cast<std::uint32_t>(name.size()), 2);
        bytes.text(name);
        bytes.number(serial_, 4);
        bytes.number(static_cast<std::uint32_t>(value), 4);
    }
    const Atom property = XInternAtom(display_.get(), "_XSETTINGS_SETTINGS", False);
    XChangeProperty(display_.get(), window_, property, property, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(bytes.bytes().data()),
                    static_cast<int>(bytes.bytes().size()));
    XSync(display_.get(), False);
}

}  // namespace test
