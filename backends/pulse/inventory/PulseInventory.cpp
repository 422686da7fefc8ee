#include "backends/pulse/PulseServer.hpp"
#include "backends/pulse/categories/CategoryMapping.hpp"
#include "backends/pulse/connection/Connection.hpp"
#include "backends/pulse/inventory/InventoryItems.hpp"
#include "backends/pulse/inventory/SessionManagerState.hpp"
#include "backends/pulse/mirror/MirrorReader.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <map>
#include <optional>
#include <utility>

namespace pulse {
namespace {

// A new device or stream comes as several events.
constexpr double settlingSeconds = 0.02;

/// Implements openInventory() out of a connection and a mirror: whenever the mirror has changed and
/// settled, it compares what it would answer with what it last told.
class PulseInventory final : public SoundInventory {
 public:
    explicit PulseInventory(NSString address)
        : connection_(std::move(address), inventoryApplicationName,
                      {[this](PulseContext& context) { becameReady(context); }, [this] { lost(); },
                       [this](Part part) { announced(part); }}) {}

    State state() const override { return told_.state; }
    std::vector<Item> items() const override { return told_.items; }
    bool isThere(const NSString& category) override { return look(category).isThere; }
    NSString whatItMoves(const NSString& category) override { return look(category).moves; }

 private:
    struct Answer {
        bool isThere = false;
        NSString moves;
        bool operator==(const Answer&) const = default;
    };
    struct Told {
        State state = State::Connecting;
        std::vector<Item> items;
        std::map<std::string, Answer> answers;  // By category, for each that was asked for.
        bool operator==(const Told&) const = default;
    };

    Answer answerFor(const std::string& category) const;
    const Answer& look(const NSString& category);

    void becameReady(PulseContext& context);
    void lost();
    void announced(Part part);
    void mirrorChanged();
    void tell();

    State state_ = State::Connecting;
    Told told_;
    OneShotTimer telling_;
    ServerMirror mirror_;
    SeenPlayers seen_;
    std::optional<MirrorReader> reader_;
    // Declared last, destroyed first: no answer to the other members comes after that.
    Connection connection_;
};

PulseInventory::Answer PulseInventory::answerFor(const std::string& category) const {
    if (state_ != State::Ready) return {};
    return {isReadable(mirror_, category), pulse::whatItMoves(mirror_, category, seen_)};
}

const PulseInventory::Answer& PulseInventory::look(const NSString& category) {
    static const Answer nothing;
    if (!isCategory(category)) return nothing;
    return told_.answers.insert_or_assign(*category, answerFor(*category)).first->second;
}

void PulseInventory::becameReady(PulseContext& context) {
    context.subscribe();
    reader_.emplace(context, mirror_, [this](Part) { mirrorChanged(); });
}

void PulseInventory::lost() {
    reader_.reset();
    state_ = State::Unavailable;
    telling_.start(0, [this] { tell(); });
}

// Streams of applications come and go with their restore entries.
void PulseInventory::announced(Part part) {
    if (!reader_) return;
    reader_->refresh(part);
    if (part == Part::SinkInputs && !mirror_.server.announcesRestoreEntries())
        reader_->refresh(Part::RestoreEntries);
}

void PulseInventory::mirrorChanged() {
    if (!reader_->isComplete()) return;
    seen_.observe(mirror_);
    const bool isFirst = std::exchange(state_, State::Ready) != State::Ready;
    if (isFirst && mirror_.server.pipeWire) seen_.remember(applicationsThatHavePlayed());
    if (isFirst)
        telling_.start(0, [this] { tell(); });
    else if (!telling_.isRunning())
        telling_.start(settlingSeconds, [this] { tell(); });
}

void PulseInventory::tell() {
    Told now;
    now.state = state_;
    if (state_ == State::Ready) now.items = inventoryItems(mirror_, seen_);
    for (const auto& [category, answer] : told_.answers)
        now.answers.emplace(category, answerFor(category));
    if (now == told_) return;
    told_ = std::move(now);
    tellChange();
}

}  // namespace

std::shared_ptr<SoundInventory> openInventory(const NSString& address) {
    return std::make_shared<PulseInventory>(address);
}

}  // namespace pulse
