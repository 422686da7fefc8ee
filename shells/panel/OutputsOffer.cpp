#include "shells/panel/OutputsOffer.hpp"

#include "shells/common/Translation.hpp"

#include <algorithm>
#include <cmath>

namespace shell {
namespace {

// Points. Narrower, the sentence takes two lines, and the buttons lie below each other.
constexpr CGFloat narrowWidth = 300;
constexpr CGFloat sideMargin = 20;
constexpr CGFloat aboveText = 12;
constexpr CGFloat textLineHeight = 16;
constexpr CGFloat offerTextSize = 12;
constexpr CGFloat belowText = 10;
constexpr CGFloat betweenButtons = 8;
constexpr CGFloat belowButtons = 14;
constexpr UIColor offerTextColor = {1, 1, 1, 0.85};
constexpr UIColor hairlineColor = {1, 1, 1, 0.12};

bool isNarrow(CGFloat width) {
    return width < narrowWidth;
}

/// What there is to gain, in as many lines as it takes in that width.
std::string offerIn(CGFloat width) {
    constexpr CGFloat letterWidth = 6.25;  // Points; of most letters.
    constexpr std::size_t narrowColumns = 22;
    const auto columns = static_cast<std::size_t>((width - 2 * sideMargin) / letterWidth);
    // TRANSLATORS: The sentence above the two buttons "Keep them apart" and "Not now". The shorter,
    // the better: it fits into one line up to some 50 letters.
    return wrapped(translated("Media and ringtone share one volume."),
                   isNarrow(width) ? narrowColumns : columns);
}

CGFloat textHeightIn(CGFloat width) {
    return textLineHeight * static_cast<CGFloat>(1 + std::ranges::count(offerIn(width), '\n'));
}

CGFloat buttonsHeightIn(CGFloat width) {
    return isNarrow(width) ? 2 * PlateButton::height + betweenButtons : PlateButton::height;
}

}  // namespace

OutputsOffer::OutputsOffer()
    : acceptButton_(
          // TRANSLATORS: A button, of some 20 letters at most: keep the volumes of media and
          // ringtone apart.
          std::make_shared<PlateButton>(translated("Keep them apart"),
                                        PlateButton::Weight::Suggested)),
      // TRANSLATORS: A button, of some 20 letters at most: decline the offer.
      declineButton_(
          std::make_shared<PlateButton>(translated("Not now"), PlateButton::Weight::Plain)) {
    text_->setFont(UIFont::systemFontOfSize(offerTextSize));
    text_->setTextColor(offerTextColor);
    text_->setAnnounced(true);
}

void OutputsOffer::follow(RoleOutputs* outputs) {
    outputs_ = outputs;
    setStage(stageOf(outputs));
}

OutputsOffer::Stage OutputsOffer::stageOf(const RoleOutputs* outputs) {
    if (!outputs || outputs->state() == RoleOutputs::State::Unknown) return Stage::Closed;
    // Changes that began elsewhere, as at the start of a session, go on unmentioned.
    accepted_ =
        accepted_ && (outputs->isBusy() || outputs->state() == RoleOutputs::State::Changing);
    if (accepted_) return Stage::UnderWay;
    return outputs->isOffered() ? Stage::Offered : Stage::Closed;
}

void OutputsOffer::setStage(Stage stage) {
    if (stage == stage_) return;
    stage_ = stage;
    if (!text_->superview()) {
        addSubview(text_);
        addSubview(acceptButton_);
        addSubview(declineButton_);
        const auto self = strongSelf<OutputsOffer>();
        acceptButton_->addAction(self, UIControlEventTouchUpInside,
                                 [this](const auto& /*button*/) { accept(); });
        declineButton_->addAction(self, UIControlEventTouchUpInside,
                                  [this](const auto& /*button*/) { decline(); });
    }
    acceptButton_->setHidden(stage != Stage::Offered);
    declineButton_->setHidden(stage != Stage::Offered);
    setNeedsLayout();
}

// The outputs tell the change, and whoever shows the offer may drop it then.

void OutputsOffer::accept() {
    if (!outputs_) return;
    accepted_ = true;
    outputs_->choose(RoleOutputs::Choice::Apart);
}

void OutputsOffer::decline() {
    if (outputs_) outputs_->decline();
}

CGFloat OutputsOffer::heightFor(CGFloat width) const {
    if (!isOpen()) return 0;
    return aboveText + textHeightIn(width) + belowText + buttonsHeightIn(width) + belowButtons;
}

void OutputsOffer::layoutSubviews() {
    if (!isOpen()) return;
    layOutText();
    layOutButtons();
}

void OutputsOffer::layOutText() {
    const CGSize size = frame().size;
    const CGFloat width = size.width - 2 * sideMargin;
    if (stage_ == Stage::UnderWay) {
        // TRANSLATORS: While the press on "Keep them apart" is carried out.
        text_->setText(translated("Keeping them apart\u2026"));
        text_->setFrame(CGRectMake(sideMargin, std::floor((size.height - textLineHeight) / 2),
                                   width, textLineHeight));
        return;
    }
    text_->setText(offerIn(size.width));
    text_->setFrame(CGRectMake(sideMargin, aboveText, width, textHeightIn(size.width)));
}

void OutputsOffer::layOutButtons() {
    const CGFloat width = frame().size.width;
    const bool stacked = isNarrow(width);
    const CGFloat room = width - 2 * sideMargin;
    const CGFloat each =
        std::min(PlateButton::widest, stacked ? room : std::floor((room - betweenButtons) / 2));
    const CGFloat taken = stacked ? each : 2 * each + betweenButtons;
    const CGFloat left = std::floor((width - taken) / 2);
    const CGFloat top = aboveText + textHeightIn(width) + belowText;
    const CGRect first = CGRectMake(left, top, each, PlateButton::height);
    const CGRect second = stacked ? CGRectOffset(first, 0, PlateButton::height + betweenButtons)
                                  : CGRectOffset(first, each + betweenButtons, 0);
    // Whoever reads from right to left begins at the right.
    const bool swapped = !stacked && writingDirection() == WritingDirection::RightToLeft;
    acceptButton_->setFrame(swapped ? second : first);
    declineButton_->setFrame(swapped ? first : second);
}

/// A hairline between the rows and the offer.
void OutputsOffer::drawRect(Canvas& canvas) {
    canvas.fill(CGRectMake(sideMargin, 0, frame().size.width - 2 * sideMargin, 1 / canvas.scale()),
                hairlineColor);
}

}  // namespace shell
