#pragma once

#include "platform/uikit/UIImage.hpp"
#include "platform/uikit/UIView.hpp"

#include <memory>

/// Shows an image, stretched to its bounds.
///
///     auto view = std::make_shared<UIImageView>(frame);
///     view->setImage(UIImage::imageWithContentsOfFile(path));
class UIImageView : public UIView {
 public:
    using UIView::UIView;
    std::string_view className() const override { return "UIImageView"; }

    std::shared_ptr<const UIImage> image() const { return image_; }
    void setImage(const std::shared_ptr<const UIImage>& image) {
        if (image == image_) return;
        image_ = image;
        setNeedsDisplay();
    }
    void drawRect(Canvas& canvas) override {
        UIView::drawRect(canvas);
        if (image_) image_->drawInRect(canvas, bounds());
    }

 private:
    std::shared_ptr<const UIImage> image_;
};
