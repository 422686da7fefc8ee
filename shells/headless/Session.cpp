#include "shells/headless/Session.hpp"

namespace headless {
namespace {

constexpr double finishingSeconds = 1;

}  // namespace

Session::Session(const SessionOptions& options, Device device, EventSink::Writer writer)
    : events_(std::move(writer)),
      device_(std::move(device)),
      isReady_(device_.server().state() == SoundServer::State::Ready),
      timeline_(options.clock, device_.waiter()),
      painter_(options.paintFiles),
      stage_(events_, options.bundlePath) {
    events_.setObserver([this](const Json& object) {
        if (object.contains("event")) recent_.add(object);
    });
    watchDevice();
    AVSystemController::setSharedAVSystemController(device_.shared());
    stage_.setParentWidth(options.parentWidth);
}

Session::~Session() {
    events_.mute();
    device_.server().setStateHandler({});
    device_.server().setAvailabilityHandler({});
    device_.server().setVolumeObserver({});
    AVSystemController::setSharedAVSystemController(nullptr);
}

void Session::execute(std::string_view line) {
    const auto words = splitWords(line);
    if (!words) return refuse(words.error());
    if (words->empty() || words->front().text != waitCommand) recent_.forget();
    Answer answer = answerTo(*this, *words);
    stage_.updateWindow();
    const Problem problem = timeline_.settle();
    stage_.updateWindow();
    if (problem && answer.isOk()) answer = Answer::failed(*problem);
    events_.write(answer.fields());
}

void Session::runDueCalls() {
    timeline_.showFrame();
    const Problem problem = timeline_.settle();
    stage_.updateWindow();
    if (problem) events_.write({{"event", "error"}, {"error", *problem}});
}

void Session::finish() {
    if (!device_.server().isWriting()) return;
    timeline_.advance(finishingSeconds, [this] { return !device_.server().isWriting(); });
}

void Session::watchDevice() {
    SoundServer& server = device_.server();
    server.setVolumeObserver([this](const NSString& category, float volume) {
        events_.write({{"event", "set-volume"},
                       {"category", jsonText(category)},
                       {"volume", jsonNumber(volume)}});
    });
    server.setStateHandler([this](SoundServer::State state) { serverIs(state); });
    server.setAvailabilityHandler([this] {
        events_.write({{"event", "availability"}});
        stage_.readAgain();
    });
}

void Session::serverIs(SoundServer::State state) {
    isReady_ = state == SoundServer::State::Ready;
    events_.write({{"event", "server"}, {"answers", isReady_}});
}

void Session::refuse(const std::string& reason) {
    events_.write(Answer::failed(reason).fields());
}

}  // namespace headless
