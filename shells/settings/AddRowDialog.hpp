#pragma once

#include "config/CategoryList.hpp"
#include "platform/celestial/SoundInventory.hpp"
#include "shells/settings/Toolkit.hpp"

#include <functional>
#include <string>

namespace settings {

/// What a row can be added for.
struct RowOffer {
    std::string category;
    std::string name;             ///< For people; the caption of the new row.
    std::string details;          ///< A second line.
    std::string icon;             ///< An icon's name.
    const char* group = nullptr;  ///< The heading that it stands under.
    bool isInList = false;
};

/// Everything that a row can be added for, in the order in which it is offered: the mixer's own
/// categories, then what the sound server has. nullptr for no server.
std::vector<RowOffer> rowOffers(const SoundInventory* inventory, const CategoryList& rows);

/// A dialog over the window in which a row is chosen, by name and icon, with a field to search in.
/// It destroys itself when it is closed; `choose` is called once if something was chosen. The
/// inventory must live as long as the window.
void showAddRowDialog(GtkWindow* window, const SoundInventory* inventory, const CategoryList& rows,
                      std::function<void(const RowOffer&)> choose);

}  // namespace settings
