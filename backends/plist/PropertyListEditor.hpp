#pragma once

#include "platform/foundation/NSPropertyList.hpp"

#include <functional>
#include <optional>
#include <string>

class XmlContainer;

/// Changes single values of a property list and keeps everything else. In a list of XML form every
/// other byte stays: comments, indentation, the order of keys, line ends, the document type; what
/// is added looks like its siblings (see XmlContainer). A list of binary form is written anew in
/// that form, with the same values in the same order.
///
///     auto editor = PropertyListEditor::reading(bytes);
///     if (editor && !editor->set({"0"}, "visible", PropertyValue(false)))
///         write(editor->bytes());
///
/// Each change answers nullopt, or why it was not made; then nothing has changed. Every new text is
/// read again before it counts: it holds exactly the changed tree. A path leads from the root to a
/// container; the root itself has an empty one.
class PropertyListEditor {
 public:
    enum class Refusal {
        NoSuchPlace,  ///< There is no such array, dictionary or element.
        NoForm,       ///< The file's form has none for that value, or for one so deep.
        LosesValues,  ///< A binary list holds a value that no PropertyValue stands for.
        NotTheSame,   ///< The new text would not be read as what was meant.
    };
    using Trouble = std::optional<Refusal>;

    /// For the bytes of a list that NSPropertyListCodec::decode can read.
    static Result<PropertyListEditor, PropertyListFault> reading(std::string bytes);
    /// For a new list, in XML as the mixer writes it; nullopt for a root without an XML form.
    static std::optional<PropertyListEditor> startingWith(const PropertyValue& root);

    const PropertyValue& root() const { return root_; }
    const std::string& bytes() const { return bytes_; }

    /// Replaces the value of a dictionary's entry, or adds an entry behind the others. The value it
    /// has already changes nothing.
    [[nodiscard]] Trouble set(const PropertyListPath& dictionary, const std::string& key,
                              const PropertyValue& value);
    /// Without such an entry nothing changes.
    [[nodiscard]] Trouble removeKey(const PropertyListPath& dictionary, const std::string& key);

    /// An element that was removed, and the text that belonged to it.
    struct Removed {
        PropertyValue value;
        std::string text = {};                     ///< Empty in binary form.
        std::optional<std::size_t> distance = {};  ///< From the element before, in bytes.
    };
    /// Puts an element at that number, at most the count of the array.
    [[nodiscard]] Trouble insert(const PropertyListPath& array, std::size_t number,
                                 const PropertyValue& value);
    Result<Removed, Refusal> remove(const PropertyListPath& array, std::size_t number);
    /// Puts a removed element at that number as it was. In a list that has not changed since, at
    /// the number it had, that gives the bytes from before.
    [[nodiscard]] Trouble restore(const PropertyListPath& array, std::size_t number,
                                  const Removed& removed);
    /// Moves an element so that it has the number `to` afterwards.
    [[nodiscard]] Trouble move(const PropertyListPath& array, std::size_t from, std::size_t to);

 private:
    enum class Form { Xml, Binary };
    using NewText = std::function<std::optional<std::string>()>;
    using ChangeOfText = std::function<std::optional<std::string>(const XmlContainer&)>;

    PropertyListEditor(std::string bytes, Form form, PropertyValue root)
        : bytes_(std::move(bytes)), form_(form), root_(std::move(root)) {}

    PropertyValue at(const PropertyListPath& path) const;
    std::string_view text() const;
    Trouble take(const std::optional<PropertyValue>& root, const NewText& newText);
    Trouble insertElement(const PropertyListPath& array, std::size_t number,
                          const PropertyValue& value, const ChangeOfText& change);

    std::string bytes_;
    Form form_;
    PropertyValue root_;
    bool isWhole_ = true;  ///< Whether the tree holds all that the file does.
};
