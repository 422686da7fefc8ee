#pragma once

#include "config/CategoryList.hpp"
#include "shells/settings/files/MixerFile.hpp"

#include <cstddef>
#include <string>

namespace settings {

/// A row that was removed, and where it stood.
struct RemovedRow {
    PropertyListEditor::Removed element;
    std::size_t row = 0;
    PropertyValue above{};  ///< The record above it; nil for none.
};

/// The list of rows. Where there is no file yet, that is the list that a new user begins with on
/// this device, and the first edit writes it.
///
///     auto removed = file.remove(2);
///     ...
///     if (removed) tell(file.restore(*removed));
///
/// Rows are numbered from 0, as they are shown here. In a file that another program has changed
/// meanwhile, an edit finds its row again: the nearest one with the same contents, else the nearest
/// of the same category; it is refused where the row is gone.
class CategoriesFile : public MixerFile {
 public:
    /// The behind-the-last position.
    static constexpr std::size_t end = static_cast<std::size_t>(-1);

    CategoriesFile();

    /// All records in screen order as they are written, hidden ones and those without a name too.
    CategoryList rows() const;

    [[nodiscard]] Trouble setCaption(std::size_t row, const std::string& caption);
    [[nodiscard]] Trouble setVisible(std::size_t row, bool isVisible);
    /// The row has the number `to` afterwards; beyond the last one it is the last.
    [[nodiscard]] Trouble move(std::size_t from, std::size_t to);
    /// Adds a visible row, which has the number `position` afterwards.
    [[nodiscard]] Trouble add(const std::string& category, const std::string& caption,
                              std::size_t position = end);
    /// A failure's reason is a sentence as of Trouble.
    Result<RemovedRow> remove(std::size_t row);
    /// Puts a removed row back, with its comments and unknown keys, below the row that it stood
    /// below. If nothing has changed since, the file is what it was byte for byte.
    [[nodiscard]] Trouble restore(const RemovedRow& removed);

 private:
    PropertyValue recordAt(std::size_t row) const;
    Trouble setInRow(std::size_t row, const char* key, const PropertyValue& value);
};

}  // namespace settings
