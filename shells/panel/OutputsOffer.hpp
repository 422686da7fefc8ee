#pragma once

#include "platform/celestial/RoleOutputs.hpp"
#include "shells/panel/Notices.hpp"
#include "shells/panel/PanelButtons.hpp"

#include <memory>
#include <string>

namespace shell {

/// The offer to give each role an output of its own, as the panel shows it below the rows: what
/// there is to gain, a button that accepts it and one that declines. After the press it says that
/// the change is under way, in the same place, until that has succeeded or failed.
///
///     offer->follow(server->roleOutputs());
///     if (offer->isOpen()) makeRoom(offer->heightFor(width));
///
/// Main thread.
class OutputsOffer : public UIView {
 public:
    OutputsOffer();
    std::string_view className() const override { return "OutputsOffer"; }

    /// Shows how the outputs stand now; to be called again after each of their changes. They must
    /// live until the next call; nullptr where there are none to offer.
    void follow(RoleOutputs* outputs);
    /// Whether there is anything to show.
    bool isOpen() const { return stage_ != Stage::Closed; }
    /// The height in points that it needs in that width; 0 while it is not open.
    CGFloat heightFor(CGFloat width) const;

    void drawRect(Canvas& canvas) override;
    void layoutSubviews() override;

 private:
    enum class Stage { Closed, Offered, UnderWay };

    Stage stageOf(const RoleOutputs* outputs);
    void setStage(Stage stage);
    void layOutText();
    void layOutButtons();
    void accept();
    void decline();

    RoleOutputs* outputs_ = nullptr;  ///< Not owned.
    Stage stage_ = Stage::Closed;
    bool accepted_ = false;  ///< By a press here, and not settled since.
    std::shared_ptr<CentredLabel> text_ = std::make_shared<CentredLabel>();
    std::shared_ptr<PlateButton> acceptButton_;
    std::shared_ptr<PlateButton> declineButton_;
};

}  // namespace shell
