#include "shells/headless/Session.hpp"

namespace headless {
namespace {

constexpr double finishingSeconds = 1;

}  // namespace

Session::Session(const SessionOptions& options, std::unique_ptr<Device> device,
                 EventSink::Writer writer)
    : events_(std::move(writer)),
      device_(std::move(device)),
      timeline_(options.clock, device_->waiter()),
      painter_(options.paintFiles),
      stage_(events_, options.bundlePath) {
    events_.setObserver([this](const Json& object) {
        if (object.contains("event")) recent_.add(object);
    });
    watchServer();
    AVSystemController::setSharedAVSystemController(device_->service());
    device_->observeSetVolume([this](const NSString& category, float volume) {
        events_.write({{"event", "set-volume"},
                       {"category", jsonText(category)},
                       {"volume", jsonNumber(volume)}});
    });
    stage_.setParentWidth(options.parentWidth);
}

Session::~Session() {
    events_.mute();
    device_->observeServer({});
    device_->observeSetVolume({});
    AVSystemController::setSharedAVSystemController(nullptr);
}

void Session::execute(std::string_view line) {
    const Words read = splitWords(line);
    if (!read.error.empty()) {
        refuse(read.error);
        return;
    }
    if (read.words.empty() || read.words.front().text != waitCommand) recent_.forget();
    Answer answer = answerTo(*this, read.words);
    stage_.updateWindow();
    const Failure failure = timeline_.settle();
    stage_.updateWindow();
    if (failure && answer.isOk()) answer = Answer::failed(*failure);
    events_.write(answer.fields());
}

void Session::runDueCalls() {
    timeline_.showFrame();
    const Failure failure = timeline_.settle();
    stage_.updateWindow();
    if (failure) events_.write({{"event", "error"}, {"error", *failure}});
}

void Session::finish() {
    if (!device_->isWriting()) return;
    timeline_.advance(finishingSeconds, [this] { return !device_->isWriting(); });
}

void Session::watchServer() {
    device_->observeServer([this](Device::ServerEvent event) {
        if (event == Device::ServerEvent::AvailabilityChanged) {
            events_.write({{"event", "availability"}});
            stage_.readAgain();
            return;
        }
        const bool answers = event == Device::ServerEvent::BeganToAnswer;
        events_.write({{"event", "server"}, {"answers", answers}});
    });
}

void Session::refuse(const std::string& reason) {
    events_.write(Answer::failed(reason).fields());
}

}  // namespace headless
