#include "tests/rigs/fakealsa/Elements.hpp"

#include <alsa/asoundlib.h>
#include <alsa/control_external.h>
#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

// A control plugin of the ALSA library: a mixer and jacks that are a file. A sound server takes it
// for the control device of a sound card.

namespace {

class Control {
 public:
    explicit Control(const char* path)
        : state_(open(path, O_RDWR | O_CLOEXEC)),
          changes_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        inotify_add_watch(changes_, path, IN_MODIFY);
        for (std::size_t i = 0; i < elements.size(); ++i)
            seen_[i] = read(i);
    }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    ~Control() {
        close(state_);
        close(changes_);
    }

    bool isGood() const { return state_ >= 0 && changes_ >= 0; }
    ElementState read(std::size_t element) const {
        ElementState values{};
        const ssize_t got = pread(state_, values.data(), sizeof values, offset(element));
        return got == sizeof values ? values : ElementState{};
    }
    bool write(std::size_t element, const ElementState& values) const {
        return pwrite(state_, values.data(), sizeof values, offset(element)) == sizeof values;
    }
    /// The next element that has another value than at the last call; the number of elements when
    /// there is none.
    std::size_t nextChanged() {
        char events[4096];
        while (::read(changes_, events, sizeof events) > 0) {
        }
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const ElementState now = read(i);
            if (std::exchange(seen_[i], now) != now) return i;
        }
        return elements.size();
    }

    snd_ctl_ext_t interface {};
    int descriptor() const { return changes_; }

 private:
    static off_t offset(std::size_t element) {
        return static_cast<off_t>(element * sizeof(ElementState));
    }

    int state_;
    int changes_;
    std::array<ElementState, elements.size()> seen_{};
};

Control& controlOf(snd_ctl_ext_t* interface) {
    return *static_cast<Control*>(interface->private_data);
}

const Element& elementOf(snd_ctl_ext_key_t key) {
    return elements.at(key);
}

int elementId(snd_ctl_ext_t*, unsigned place, snd_ctl_elem_id_t* id) {
    if (place >= elements.size()) return -EINVAL;
    const bool isJack = elements[place].kind == Element::Kind::Jack;
    snd_ctl_elem_id_set_interface(id, isJack ? SND_CTL_ELEM_IFACE_CARD : SND_CTL_ELEM_IFACE_MIXER);
    snd_ctl_elem_id_set_name(id, elements[place].name);
    return 0;
}

snd_ctl_ext_key_t findElement(snd_ctl_ext_t*, const snd_ctl_elem_id_t* id) {
    const unsigned number = snd_ctl_elem_id_get_numid(id);
    if (number > 0 && number <= elements.size()) return number - 1;
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (!std::strcmp(elements[i].name, snd_ctl_elem_id_get_name(id))) return i;
    return SND_CTL_EXT_KEY_NOT_FOUND;
}

int attribute(snd_ctl_ext_t*, snd_ctl_ext_key_t key, int* type, unsigned* access, unsigned* count) {
    const Element& element = elementOf(key);
    const bool isVolume = element.kind == Element::Kind::Volume;
    const bool isJack = element.kind == Element::Kind::Jack;
    *type = isVolume ? SND_CTL_ELEM_TYPE_INTEGER : SND_CTL_ELEM_TYPE_BOOLEAN;
    *access = isJack ? SND_CTL_EXT_ACCESS_READ : SND_CTL_EXT_ACCESS_READWRITE;
    *count = static_cast<unsigned>(element.channels());
    return 0;
}

int integerInfo(snd_ctl_ext_t*, snd_ctl_ext_key_t key, long* lowest, long* highest, long* step) {
    *lowest = 0;
    *highest = elementOf(key).highest();
    *step = 0;
    return 0;
}

int readInteger(snd_ctl_ext_t* interface, snd_ctl_ext_key_t key, long* values) {
    const ElementState state = controlOf(interface).read(key);
    for (int i = 0; i < elementOf(key).channels(); ++i)
        values[i] = state[static_cast<std::size_t>(i)];
    return 0;
}

// Answers whether anything changed.
int writeInteger(snd_ctl_ext_t* interface, snd_ctl_ext_key_t key, long* values) {
    const ElementState before = controlOf(interface).read(key);
    ElementState after = before;
    for (int i = 0; i < elementOf(key).channels(); ++i)
        after[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(values[i]);
    if (after == before) return 0;
    return controlOf(interface).write(key, after) ? 1 : -EIO;
}

int readEvent(snd_ctl_ext_t* interface, snd_ctl_elem_id_t* id, unsigned* mask) {
    const std::size_t changed = controlOf(interface).nextChanged();
    if (changed == elements.size()) return -EAGAIN;
    elementId(interface, static_cast<unsigned>(changed), id);
    *mask = SND_CTL_EVENT_MASK_VALUE;
    return 1;
}

void end(snd_ctl_ext_t* interface) {
    const std::unique_ptr<Control> ended(&controlOf(interface));
}

constexpr snd_ctl_ext_callback_t callbacks = [] {
    snd_ctl_ext_callback_t all{};
    all.close = end;
    all.elem_count = [](snd_ctl_ext_t*) { return static_cast<int>(elements.size()); };
    all.elem_list = elementId;
    all.find_elem = findElement;
    all.get_attribute = attribute;
    all.get_integer_info = integerInfo;
    all.read_integer = readInteger;
    all.write_integer = writeInteger;
    all.subscribe_events = [](snd_ctl_ext_t*, int) {};
    all.read_event = readEvent;
    return all;
}();

}  // namespace

extern "C" {

SND_CTL_PLUGIN_DEFINE_FUNC(fake) {
    static_cast<void>(root);
    static_cast<void>(conf);
    const char* path = std::getenv(stateVariable);
    auto control = path ? std::make_unique<Control>(path) : nullptr;
    if (!control || !control->isGood()) return -ENOENT;
    snd_ctl_ext_t& interface = control->interface;
    interface.version = SND_CTL_EXT_VERSION;
    for (char* text :
         {interface.id, interface.driver, interface.name, interface.longname, interface.mixername})
        std::strcpy(text, "Fake");
    interface.poll_fd = control->descriptor();
    interface.callback = &callbacks;
    interface.private_data = control.get();
    const int result = snd_ctl_ext_create(&interface, name, mode);
    if (result < 0) return result;
    *handlep = interface.handle;
    static_cast<void>(control.release());  // end() takes it over.
    return 0;
}

SND_CTL_PLUGIN_SYMBOL(fake)
}
