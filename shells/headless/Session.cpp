#include "shells/headless/Session.hpp"

namespace headless {

Session::Session(const SessionOptions& options, std::unique_ptr<Device> device,
                 EventSink::Writer writer)
    : events_(std::move(writer)),
      timeline_(options.clock),
      device_(std::move(device)),
      painter_(options.paintFiles),
      stage_(events_, options.bundlePath) {
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
    device_->observeSetVolume({});
    AVSystemController::setSharedAVSystemController(nullptr);
}

void Session::execute(std::string_view line) {
    const Words read = splitWords(line);
    if (!read.error.empty()) {
        refuse(read.error);
        return;
    }
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

void Session::refuse(const std::string& reason) {
    events_.write(Answer::failed(reason).fields());
}

}  // namespace headless
