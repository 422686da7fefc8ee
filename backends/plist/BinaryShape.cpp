#include "backends/plist/BinaryShape.hpp"

#include "backends/plist/BinaryObjects.hpp"
#include "platform/foundation/NSPropertyList.hpp"

#include <algorithm>
#include <vector>

namespace {

/// What an object and all that it refers to come to in the library's tree.
struct Extent {
    std::uint64_t values = 0;
    std::uint64_t bytes = 0;
    int depth = 0;  ///< Of containers.

    bool isWithinLimits() const {
        return values <= maximumValues && bytes <= maximumExpandedBytes &&
               depth <= NSPropertyList::maximumDepth;
    }
    void include(const Extent& part) {
        values += part.values;
        bytes += part.bytes;
        depth = std::max(depth, part.depth + 1);
    }
};

/// Walks the objects depth first, each once however often it is referred to.
class BinaryShape {
 public:
    explicit BinaryShape(const BinaryObjects& objects)
        : objects_(objects), visits_(objects.count()) {}

    bool isReadable() {
        if (!enter(objects_.root())) return false;
        while (!path_.empty()) {
            Step& step = path_.back();
            if (step.nextReference < step.object.references) {
                if (!follow(step)) return false;
            } else {
                leave();
            }
        }
        return true;
    }

    /// The object where the walk has ended.
    std::uint64_t lastEntered() const { return lastEntered_; }

 private:
    enum class State : std::uint8_t { New, Open, Done };
    struct Visit {
        State state = State::New;
        Extent extent;
    };
    /// An object on the way from the root to where the walk is.
    struct Step {
        std::uint64_t index = 0;
        BinaryObject object;
        std::uint64_t nextReference = 0;
    };

    bool enter(std::uint64_t index) {
        // The containers that may lie in each other, and a value in the last of them.
        constexpr std::size_t longestPath = NSPropertyList::maximumDepth + 1;
        lastEntered_ = index;
        const auto object = objects_.object(index);
        if (!object || path_.size() == longestPath) return false;
        Visit& visit = visits_[index];
        visit.state = State::Open;
        visit.extent = {1, object->payloadBytes, object->isContainer ? 1 : 0};
        path_.push_back({index, *object});
        return visit.extent.isWithinLimits();
    }

    /// Goes to the next object that the one at the end of the path refers to.
    bool follow(Step& step) {
        const auto index = objects_.reference(step.object, step.nextReference);
        if (!index || visits_[*index].state == State::Open) return false;
        if (visits_[*index].state == State::New) return enter(*index);
        ++step.nextReference;
        Extent& whole = visits_[step.index].extent;
        whole.include(visits_[*index].extent);
        return whole.isWithinLimits() && ++references_ <= maximumValues;
    }

    void leave() {
        visits_[path_.back().index].state = State::Done;
        path_.pop_back();
    }

    const BinaryObjects& objects_;
    std::vector<Visit> visits_;
    std::vector<Step> path_;
    std::uint64_t references_ = 0;  ///< Followed so far.
    std::uint64_t lastEntered_ = 0;
};

}  // namespace

std::optional<std::string> faultInBinary(std::string_view file) {
    const auto objects = BinaryObjects::in(file);
    if (!objects) return "the binary list's header or trailer is damaged";
    if (objects->count() > maximumValues) return "more values than can be read";
    BinaryShape shape(*objects);
    if (shape.isReadable()) return std::nullopt;
    return "object " + std::to_string(shape.lastEntered()) +
           " of the binary list is damaged, or stands for more than can be read";
}
