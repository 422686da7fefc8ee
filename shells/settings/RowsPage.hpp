#pragma once

#include "platform/celestial/SoundInventory.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/settings/Toolkit.hpp"
#include "shells/settings/files/CategoriesFile.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace settings {

/// The page of the mixer's rows: their order, captions and visibility. Every change is written at
/// once; one that cannot be written is told and taken back. Main thread.
class RowsPage {
 public:
    struct Handlers {
        /// A row was to be added.
        std::function<void()> add;
        /// Tells the user why something was not done.
        std::function<void(const std::string& trouble)> tell;
        /// Shows a toast about what was removed; `undo` puts it back.
        std::function<void(const std::string& removed, std::function<void()> undo)> offerUndo;
    };

    /// `file` outlives the page.
    RowsPage(CategoriesFile& file, Handlers handlers);
    ~RowsPage();
    RowsPage(const RowsPage&) = delete;
    RowsPage& operator=(const RowsPage&) = delete;

    GtkWidget* widget() const { return GTK_WIDGET(page_.get()); }
    /// What tells whether the rows' categories are there now; nullptr for unknown. It must live
    /// until the next call.
    void setInventory(SoundInventory* inventory);
    /// Shows what the file and the inventory hold now. What is being typed stays.
    void refresh();
    /// Moves the focus to the row's caption and selects it, once the row is shown.
    void edit(std::size_t row);

 private:
    class Row;
    enum class FocusedText { AsItIs, Selected };
    struct Focus {
        std::size_t row = 0;
        FocusedText text = FocusedText::AsItIs;
    };

    void offerNames(GtkBuilder* builder);
    void useNames();
    void refreshSoon();
    void focus();
    bool showsSameRows() const;
    void rebuild();
    void setCaption(Row& row);
    void setVisible(const Row& row);
    void moveBy(const Row& row, int places);
    void move(std::size_t from, std::size_t to);
    void remove(std::size_t index);
    void tellOf(const Trouble& trouble);

    std::string wordsOf(const NSString& category) const;

    CategoriesFile& file_;
    SoundInventory* inventory_ = nullptr;
    Handlers handlers_;
    Ref<AdwPreferencesPage> page_;
    GtkWidget* names_ = nullptr;  ///< Offers simpler names, at the first start alone.
    GtkListBox* list_ = nullptr;
    CategoryList shown_;  ///< What the file held at the last refresh().
    std::vector<std::unique_ptr<Row>> rows_;
    std::optional<Focus> focused_;  ///< The row to be focused after the next refresh.
    OneShotTimer refreshing_;
};

}  // namespace settings
