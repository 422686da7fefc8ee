#include "backends/plist/Forms.hpp"
#include "backends/plist/XmlText.hpp"

#include <algorithm>

namespace {

constexpr std::string_view prolog =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

/// Writes one value and all below it. Each call is false for what has no XML form.
class XmlWriter {
 public:
    XmlWriter(std::string& xml, const XmlLayout& layout) : xml_(xml), layout_(layout) {}

    bool write(const PropertyValue& value) { return std::visit(*this, value.storage()); }

    bool operator()(std::monostate) { return false; }
    bool operator()(bool value) { return line(value ? "<true/>" : "<false/>"); }
    bool operator()(std::int64_t value) { return element("integer", std::to_string(value)); }
    bool operator()(std::uint64_t value) { return element("integer", std::to_string(value)); }
    bool operator()(double value) { return element("real", textOfReal(value)); }
    bool operator()(const std::string& value) { return text("string", value); }

    bool operator()(PropertyValue::Date date) {
        const auto value = textOfDate(date);
        return value && element("date", *value);
    }

    bool operator()(const std::shared_ptr<const PropertyValue::Data>& data) {
        line("<data>");
        // Lines of 76 columns, a tab being eight of them.
        const std::size_t indent = std::min<std::size_t>(depth_, 8);
        const std::size_t bytesOfLine = (76 - 8 * indent) / 4 * 3;
        for (std::size_t at = 0; at < data->size(); at += bytesOfLine) {
            const std::size_t size = std::min(bytesOfLine, data->size() - at);
            indentBy(indent);
            xml_ += textOfData(data->data() + at, size) + layout_.lineEnd;
        }
        return line("</data>");
    }

    bool operator()(const std::shared_ptr<const PropertyValue::Array>& elements) {
        return container("array", elements->empty(), [&] {
            return std::ranges::all_of(*elements, [&](const auto& each) { return write(each); });
        });
    }

    bool operator()(const std::shared_ptr<const PropertyValue::Dictionary>& entries) {
        return container("dict", entries->empty(), [&] {
            return std::ranges::all_of(*entries, [&](const auto& each) {
                return text("key", each.first) && write(each.second);
            });
        });
    }

 private:
    bool line(std::string_view contents) {
        indentBy(depth_);
        xml_ += contents;
        xml_ += layout_.lineEnd;
        return true;
    }

    void indentBy(std::size_t depth) {
        xml_ += layout_.indent;
        for (std::size_t i = 0; i < depth; ++i)
            xml_ += layout_.unit;
    }

    bool element(const std::string& name, const std::string& contents) {
        return line("<" + name + ">" + contents + "</" + name + ">");
    }

    bool text(const std::string& name, const std::string& contents) {
        return canStandInXml(contents) && element(name, escaped(contents));
    }

    template <class WriteContents>
    bool container(const std::string& name, bool isEmpty, WriteContents writeContents) {
        if (depth_ == NSPropertyList::maximumDepth) return false;
        if (isEmpty) return line("<" + name + "/>");
        line("<" + name + ">");
        ++depth_;
        const bool isWritten = writeContents();
        --depth_;
        return isWritten && line("</" + name + ">");
    }

    std::string& xml_;
    const XmlLayout& layout_;
    std::size_t depth_ = 0;
};

}  // namespace

std::optional<std::string> writeXmlPropertyList(const PropertyValue& value) {
    std::string xml(prolog);
    const XmlLayout layout;
    if (!XmlWriter(xml, layout).write(value)) return std::nullopt;
    return xml += "</plist>\n";
}

std::optional<std::string> writeXmlValue(const PropertyValue& value, const XmlLayout& layout) {
    std::string xml;
    if (!XmlWriter(xml, layout).write(value)) return std::nullopt;
    const std::size_t surroundings = layout.indent.size() + layout.lineEnd.size();
    return xml.substr(layout.indent.size(), xml.size() - surroundings);
}
