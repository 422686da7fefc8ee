#pragma once

#include "shells/panel/PanelWidget.hpp"

#include <memory>

/// What the panel shows, and how large that wants to be, in points.
struct PanelContent {
    std::shared_ptr<UIView> view;
    CGSize size;
};

/// The presented widget's view; where there is nothing on it, a notice that says so.
PanelContent panelContent(PanelWidget& widget);
