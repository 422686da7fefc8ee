#pragma once

#include <pipewire/pipewire.h>
#include <spa/monitor/device.h>
#include <spa/param/param.h>
#include <spa/pod/builder.h>

#include <array>
#include <string>
#include <vector>

/// Where a card can be plugged in.
struct Port {
    const char* name;
    const char* description;
    const char* type;  ///< As the sound server's clients know port types.
    int priority;      ///< The session manager takes the highest that is available.
    spa_param_availability availability;
    float volume;  ///< Linear, of both channels.
    bool isMuted = false;
};

/// A sound card without sound, as the session manager sees it: a device with an "off" profile, one
/// with ports, and one active port of which the volume belongs to the card.
class Card {
 public:
    explicit Card(const std::string& name);
    Card(const Card&) = delete;
    Card& operator=(const Card&) = delete;
    ~Card();

    /// For the device's export.
    spa_device* device() { return &device_; }
    const spa_dict* properties() const { return &properties_->dict; }
    std::size_t portCount() const { return ports_.size(); }

    /// These answer whether there is such a port. The user's plug; the port itself is the session
    /// manager's to choose.
    bool setAvailability(const std::string& port, spa_param_availability availability);
    /// A change made on the device: its own buttons, or another mixer.
    bool choosePort(const std::string& port);
    void setVolume(float linear);
    void setMuted(bool muted);

    /// "headphones 0.064 unmuted": the active port's name, linear volume and mute.
    std::string state() const;

 private:
    struct Methods;
    static constexpr int soundProfile = 1;

    int addListener(spa_hook* listener, const spa_device_events* events, void* data);
    int enumerate(int sequence, uint32_t id, uint32_t start, uint32_t count, const spa_pod* filter);
    int setProfile(const spa_pod* parameter);
    int setRoute(const spa_pod* parameter);
    void takeProperties(const spa_pod& properties);

    spa_pod* build(spa_pod_builder& builder, uint32_t id, uint32_t index) const;
    spa_pod* buildProfile(spa_pod_builder& builder, uint32_t id, int profile) const;
    spa_pod* buildRoute(spa_pod_builder& builder, uint32_t id, uint32_t index) const;
    void addRouteState(spa_pod_builder& builder, uint32_t id, const Port& port) const;

    Port* portNamed(const std::string& name);
    /// Tells the listeners that parameters of that kind changed.
    void changed(const std::vector<uint32_t>& ids);
    void emitInfo();

    std::vector<Port> ports_;
    std::size_t active_ = 0;
    int profile_ = soundProfile;
    bool save_ = false;

    spa_device device_{};
    spa_hook_list listeners_{};
    spa_device_info info_{};
    std::array<spa_param_info, 4> parameters_{};
    pw_properties* properties_;
};
