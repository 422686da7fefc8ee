#include "shells/headless/Painter.hpp"

namespace headless {

Result<std::vector<CGRect>> Painter::paint(UIWindow& window, const std::string& file,
                                           double scale) {
    window.layoutIfNeeded();
    const CGSize size = window.frame().size;
    if (CGRectIsEmpty(window.bounds())) return Failure{"there is no view to paint"};
    std::vector<CGRect> damage = window.takeDamage();
    if (!fits(window, scale)) {
        picture_ = painting::CairoWindowPicture::create(size, static_cast<CGFloat>(scale));
        damage = {window.bounds()};
    }
    if (!picture_) return Failure{"the picture would be too large"};
    picture_->paint(window, damage);
    if (files_ == PaintFiles::Written)
        if (const auto problem = picture_->writePNG(file)) return Failure{*problem};
    return damage;
}

bool Painter::fits(const UIWindow& window, double scale) const {
    return picture_ && picture_->size() == window.frame().size &&
           picture_->scale() == static_cast<CGFloat>(scale);
}

}  // namespace headless
