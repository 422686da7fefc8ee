#include "shells/headless/Painter.hpp"

namespace headless {

Painted Painter::paint(UIWindow& window, const std::string& file, double scale) {
    window.layoutIfNeeded();
    const CGSize size = window.frame().size;
    if (CGRectIsEmpty(window.bounds())) return {{}, "there is no view to paint"};
    std::vector<CGRect> damage = window.takeDamage();
    if (!fits(window, scale)) {
        picture_ = CairoWindowPicture::create(size, static_cast<CGFloat>(scale));
        damage = {window.bounds()};
    }
    if (!picture_) return {{}, "the picture would be too large"};
    picture_->paint(window, damage);
    const Failure failure = files_ == PaintFiles::Written ? picture_->writePNG(file) : std::nullopt;
    return {std::move(damage), failure};
}

bool Painter::fits(const UIWindow& window, double scale) const {
    return picture_ && picture_->size() == window.frame().size &&
           picture_->scale() == static_cast<CGFloat>(scale);
}

}  // namespace headless
