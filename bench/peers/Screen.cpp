#include "bench/peers/Screen.hpp"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>
#include <poll.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <stdexcept>
#include <utility>

namespace peers {
namespace {

// More colours than a frame, a background and a separator have.
constexpr std::size_t fewColours = 8;
// Pixels. Smaller windows are programs' helper windows.
constexpr int leastSide = 100;

}  // namespace

bool Picture::showsSomething() const {
    std::set<std::uint32_t> colours;
    std::optional<std::uint32_t> last;
    return std::ranges::any_of(pixels, [&](std::uint32_t pixel) {
        if (pixel == std::exchange(last, pixel)) return false;
        colours.insert(pixel);
        return colours.size() > fewColours;
    });
}

void Picture::save(const std::string& file) const {
    std::ofstream stream(file, std::ios::binary);
    stream << "P6\n" << width << ' ' << height << "\n255\n";
    for (const std::uint32_t pixel : pixels)
        for (const int shift : {16, 8, 0})
            stream.put(static_cast<char>(pixel >> shift & 0xFFU));
}

void Screen::Close::operator()(Display* display) const {
    XCloseDisplay(display);
}

Screen::Screen(const std::string& displayName) : display_(XOpenDisplay(displayName.c_str())) {
    int firstError = 0;
    if (!display_ || XDamageQueryExtension(display_.get(), &damageEvent_, &firstError) == False)
        throw std::runtime_error("no X server that tells what is painted");
    // A window may be destroyed between an event and the request that answers it.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    XSelectInput(display_.get(), DefaultRootWindow(display_.get()), SubstructureNotifyMask);
    XSync(display_.get(), False);
}

void Screen::lookForNewWindow() {
    XSync(display_.get(), True);
    window_ = 0;
}

/// Whether the next event announces a visible change.
bool Screen::takeEvent() {
    XEvent event;
    XNextEvent(display_.get(), &event);
    // Watched from its creation, so that the first picture is not missed.
    if (event.type == CreateNotify)
        XDamageCreate(display_.get(), event.xcreatewindow.window, XDamageReportNonEmpty);
    if (event.type == MapNotify && window_ == 0) {
        XWindowAttributes attributes = {};
        XGetWindowAttributes(display_.get(), event.xmap.window, &attributes);
        if (attributes.width >= leastSide && attributes.height >= leastSide)
            window_ = event.xmap.window;
    }
    if (event.type != damageEvent_ + XDamageNotify) return false;
    const auto& damage = reinterpret_cast<const XDamageNotifyEvent&>(event);
    XDamageSubtract(display_.get(), damage.damage, None, None);
    return damage.drawable == window_;
}

std::optional<Clock::time_point> Screen::waitForPaint(Clock::time_point deadline) {
    while (true) {
        if (XPending(display_.get()) > 0) {
            const Clock::time_point told = Clock::now();
            if (takeEvent()) return told;
            continue;
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return std::nullopt;
        pollfd connection = {ConnectionNumber(display_.get()), POLLIN, 0};
        poll(&connection, 1, static_cast<int>(left));
    }
}

Picture Screen::picture() {
    XWindowAttributes attributes = {};
    if (window_ == 0 || XGetWindowAttributes(display_.get(), window_, &attributes) == 0) return {};
    Picture picture{
        static_cast<unsigned>(attributes.width), static_cast<unsigned>(attributes.height), {}};
    XImage* image =
        XGetImage(display_.get(), window_, 0, 0, picture.width, picture.height, AllPlanes, ZPixmap);
    if (!image) return {};
    // 24 bits in 32, as the server was started.
    const auto* begin = reinterpret_cast<const std::uint32_t*>(image->data);
    picture.pixels.assign(begin, begin + std::size_t{picture.width} * picture.height);
    XDestroyImage(image);
    return picture;
}

}  // namespace peers
