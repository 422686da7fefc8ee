#include "tests/desktop/XServer.hpp"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <set>
#include <stdexcept>

namespace test {
namespace {

std::string readLine(int descriptor) {
    std::string line;
    for (char character = 0; read(descriptor, &character, 1) == 1 && character != '\n';)
        line += character;
    return line;
}

}  // namespace

XServer::XServer(Glx glx) {
    int answer[2];
    if (pipe2(answer, O_CLOEXEC) != 0) return;
    // -noreset: a real desktop's server does not forget everything with its last client. The
    // display's number is written to standard output once the server takes connections.
    std::vector<std::string> words = {
        "Xvfb",    "-noreset",   "-nolisten",
        "tcp",     "-displayfd", "1",
        "-screen", "0",          std::to_string(width) + "x" + std::to_string(height) + "x24"};
    if (glx == Glx::Off) words.insert(words.end(), {"-extension", "GLX"});
    process_ = ChildProcess(words, {.output = answer[1]});
    close(answer[1]);
    const std::string number = readLine(answer[0]);
    close(answer[0]);
    if (!number.empty()) displayName_ = ":" + number;
}

XServer::~XServer() {
    process_.signal(SIGTERM);  // It removes its lock.
    process_.wait();
}

void XUser::Close::operator()(Display* display) const {
    XCloseDisplay(display);
}

XUser::XUser(const std::string& displayName) : display_(XOpenDisplay(displayName.c_str())) {
    if (!display_) throw std::runtime_error("no X server at '" + displayName + "'");
}

void XUser::moveTo(double x, double y) {
    XTestFakeMotionEvent(display_.get(), -1, static_cast<int>(x), static_cast<int>(y), CurrentTime);
    XSync(display_.get(), False);
}

void XUser::press(unsigned button) {
    XTestFakeButtonEvent(display_.get(), button, True, CurrentTime);
    XSync(display_.get(), False);
}

void XUser::release(unsigned button) {
    XTestFakeButtonEvent(display_.get(), button, False, CurrentTime);
    XSync(display_.get(), False);
}

void XUser::click(unsigned button) {
    press(button);
    release(button);
}

void XUser::pressKey(unsigned long key) {
    XTestFakeKeyEvent(display_.get(), XKeysymToKeycode(display_.get(), key), True, CurrentTime);
    XSync(display_.get(), False);
}

void XUser::releaseKey(unsigned long key) {
    XTestFakeKeyEvent(display_.get(), XKeysymToKeycode(display_.get(), key), False, CurrentTime);
    XSync(display_.get(), False);
}

void XUser::typeKey(unsigned long key) {
    pressKey(key);
    releaseKey(key);
}

void XUser::closeWindow(unsigned long window) {
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display_.get(), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(display_.get(), "WM_DELETE_WINDOW", False));
    XSendEvent(display_.get(), window, False, NoEventMask, &event);
    XSync(display_.get(), False);
}

std::vector<std::uint32_t> XUser::pixelsIn(const CGRect& rect) {
    const auto width = static_cast<unsigned>(rect.size.width);
    const auto height = static_cast<unsigned>(rect.size.height);
    XImage* image = XGetImage(display_.get(), DefaultRootWindow(display_.get()),
                              static_cast<int>(rect.origin.x), static_cast<int>(rect.origin.y),
                              width, height, AllPlanes, ZPixmap);
    if (!image) throw std::runtime_error("that is not on the screen");
    std::vector<std::uint32_t> pixels;
    for (unsigned y = 0; y < height; ++y)
        for (unsigned x = 0; x < width; ++x)
            pixels.push_back(static_cast<std::uint32_t>(
                                 XGetPixel(image, static_cast<int>(x), static_cast<int>(y))) &
                             0xFFFFFFU);
    XDestroyImage(image);
    return pixels;
}

std::uint32_t XUser::pixelAt(double x, double y) {
    return pixelsIn(CGRectMake(static_cast<CGFloat>(x), static_cast<CGFloat>(y), 1, 1)).front();
}

std::size_t XUser::coloursIn(const CGRect& rect) {
    const std::vector<std::uint32_t> pixels = pixelsIn(rect);
    return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size();
}

std::size_t XUser::countOf(std::uint32_t colour, const CGRect& rect) {
    return static_cast<std::size_t>(std::ranges::count(pixelsIn(rect), colour));
}

}  // namespace test
