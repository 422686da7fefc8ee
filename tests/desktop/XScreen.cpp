#include "tests/desktop/XScreen.hpp"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <cairo.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace test {
namespace {

struct XMemory {
    void operator()(void* memory) const {
        if (memory) XFree(memory);
    }
};

bool isOfClass(Display* display, Window window, const std::string& windowClass) {
    XClassHint hint = {};
    if (XGetClassHint(display, window, &hint) == 0) return false;
    const std::unique_ptr<char, XMemory> name(hint.res_name);
    const std::unique_ptr<char, XMemory> found(hint.res_class);
    return found && windowClass == found.get();
}

/// A window may go while it is looked at.
class IgnoredErrors {
 public:
    IgnoredErrors()
        : former_(
              XSetErrorHandler(+[](Display* /*display*/, XErrorEvent* /*error*/) { return 0; })) {}
    ~IgnoredErrors() { XSetErrorHandler(former_); }
    IgnoredErrors(const IgnoredErrors&) = delete;
    IgnoredErrors& operator=(const IgnoredErrors&) = delete;

 private:
    XErrorHandler former_;
};

}  // namespace

std::uint32_t ScreenPicture::at(double x, double y) const {
    const auto column = static_cast<int>(x);
    const auto row = static_cast<int>(y);
    if (x < 0 || y < 0 || column >= width_ || row >= height_) return 0;
    return pixels_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(column)];
}

CGRect ScreenPicture::difference(const ScreenPicture& other) const {
    int left = width_;
    int top = height_;
    int right = -1;
    int bottom = -1;
    for (int y = 0; y < height_; ++y)
        for (int x = 0; x < width_; ++x) {
            if (at(x, y) == other.at(x, y)) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    if (right < 0) return {};
    return CGRectMake(left, top, right - left + 1, bottom - top + 1);
}

double ScreenPicture::middleOfWhite(double y, double fromX, double toX) const {
    constexpr std::uint32_t leastWhite = 0xE0;
    double sum = 0;
    int count = 0;
    for (double x = fromX; x < toX; ++x) {
        const std::uint32_t pixel = at(x, y);
        if ((pixel & 0xFFU) < leastWhite || (pixel >> 8U & 0xFFU) < leastWhite) continue;
        sum += x;
        ++count;
    }
    return count == 0 ? -1 : sum / count;
}

void ScreenPicture::keep(const std::string& name) const {
    const std::filesystem::path folder = TARNWICK_EVIDENCE_DIR;
    std::filesystem::create_directories(folder);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width_, height_);
    unsigned char* bytes = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < height_; ++y)
        for (int x = 0; x < width_; ++x)
            reinterpret_cast<std::uint32_t*>(bytes + y * stride)[x] = at(x, y);
    cairo_surface_mark_dirty(surface);
    const auto status = cairo_surface_write_to_png(surface, (folder / (name + ".png")).c_str());
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error("cannot keep " + name);
}

XScreen::XScreen(const std::string& displayName) : display_(XOpenDisplay(displayName.c_str())) {
    if (!display_) throw std::runtime_error("no X server at '" + displayName + "'");
}

ScreenPicture XScreen::picture() const {
    Display* display = display_.get();
    const int screen = DefaultScreen(display);
    const int width = DisplayWidth(display, screen);
    const int height = DisplayHeight(display, screen);
    XImage* image =
        XGetImage(display, DefaultRootWindow(display), 0, 0, static_cast<unsigned>(width),
                  static_cast<unsigned>(height), AllPlanes, ZPixmap);
    if (!image) throw std::runtime_error("the screen cannot be seen");
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y)) & 0xFFFFFFU);
    XDestroyImage(image);
    return {width, height, std::move(pixels)};
}

std::vector<CGRect> XScreen::windowsOf(const std::string& windowClass) const {
    std::vector<CGRect> found;
    for (const unsigned long window : shownBy(windowClass)) {
        XWindowAttributes attributes = {};
        const IgnoredErrors ignored;
        if (XGetWindowAttributes(display_.get(), window, &attributes) != 0)
            found.push_back(
                CGRectMake(attributes.x, attributes.y, attributes.width, attributes.height));
    }
    return found;
}

std::vector<unsigned long> XScreen::shownBy(const std::string& windowClass) const {
    Display* display = display_.get();
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    std::vector<unsigned long> found;
    const IgnoredErrors ignored;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
    const std::unique_ptr<Window, XMemory> owned(children);
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes attributes = {};
        if (XGetWindowAttributes(display, children[i], &attributes) == 0) continue;
        if (attributes.map_state == IsViewable && isOfClass(display, children[i], windowClass))
            found.push_back(children[i]);
    }
    return found;
}

void XScreen::resize(const std::string& windowClass, const CGSize& size) const {
    for (const unsigned long window : shownBy(windowClass))
        XResizeWindow(display_.get(), window, static_cast<unsigned>(size.width),
                      static_cast<unsigned>(size.height));
    XSync(display_.get(), False);
}

std::vector<unsigned long> XScreen::numbersOf(const std::string& windowClass,
                                              const char* name) const {
    unsigned long count = 0;
    const auto bytes = propertyOf(windowClass, name, 32, count);
    const auto* numbers = reinterpret_cast<const unsigned long*>(bytes.get());
    return bytes ? std::vector<unsigned long>(numbers, numbers + count)
                 : std::vector<unsigned long>();
}

std::string XScreen::textOf(const std::string& windowClass, const char* name) const {
    unsigned long count = 0;
    const auto bytes = propertyOf(windowClass, name, 8, count);
    return bytes ? std::string(reinterpret_cast<const char*>(bytes.get()), count) : std::string();
}

XScreen::Property XScreen::propertyOf(const std::string& windowClass, const char* name, int bits,
                                      unsigned long& count) const {
    const auto windows = shownBy(windowClass);
    if (windows.empty()) return nullptr;
    constexpr long most = 1 << 20;
    Atom type = 0;
    int format = 0;
    unsigned long left = 0;
    unsigned char* bytes = nullptr;
    const IgnoredErrors ignored;
    XGetWindowProperty(display_.get(), windows.front(), XInternAtom(display_.get(), name, False), 0,
                       most, False, AnyPropertyType, &type, &format, &count, &left, &bytes);
    Property found(bytes);
    return format == bits ? std::move(found) : nullptr;
}

void XScreen::Free::operator()(unsigned char* bytes) const {
    if (bytes) XFree(bytes);
}

}  // namespace test
