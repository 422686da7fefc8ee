#include "shells/settings/FileTrouble.hpp"

#include "shells/common/Translation.hpp"

#include <algorithm>
#include <utility>

namespace settings {
namespace {

std::string reasonOf(const MixerFile& file) {
    const FileState& state = file.state();
    const std::string line = std::to_string(state.place.line);
    const std::string column = std::to_string(state.place.column);
    return shell::filled(
        state.place.line > 0 ? shell::translated("{file}, line {line}, column {column}: {reason}")
                             : shell::translated("{file}: {reason}"),
        {{"file", file.path()}, {"line", line}, {"column", column}, {"reason", state.reason}});
}

/// In the user's way of writing dates.
std::string dateOf(std::time_t time) {
    GDateTime* date = g_date_time_new_from_unix_local(time);
    const Text text(g_date_time_format(date, "%x %H:%M"));
    g_date_time_unref(date);
    return text.get();
}

}  // namespace

FileTrouble::FileTrouble(MixerFile& file, const char* title,
                         std::function<void(const std::string& trouble)> tell)
    : file_(file), tell_(std::move(tell)) {
    const Ref<GtkBuilder> builder(
        gtk_builder_new_from_resource("/org/tarnwick/Settings/trouble.ui"));
    card_.reset(ADW_CLAMP(g_object_ref_sink(objectIn<AdwClamp>(builder.get(), "card"))));
    gtk_label_set_text(objectIn<GtkLabel>(builder.get(), "title"), title);
    reason_ = objectIn<GtkLabel>(builder.get(), "reason");
    copyPlace_ = objectIn<GtkWidget>(builder.get(), "copy-place");
    copyButton_ = objectIn<GtkButton>(builder.get(), "copy");
    const auto tellOf = [this](const Trouble& trouble) {
        if (trouble) tell_(*trouble);
    };
    onSignal(objectIn<GtkButton>(builder.get(), "edit"), "clicked", [this] { openInEditor(); });
    onSignal(copyButton_, "clicked", [this, tellOf] {
        if (copy_) tellOf(file_.useCopy(*copy_));
    });
    onSignal(objectIn<GtkButton>(builder.get(), "anew"), "clicked",
             [this, tellOf] { tellOf(file_.startAnew()); });
    refresh();
}

void FileTrouble::refresh() {
    const bool isInTrouble = !file_.state().isUsable();
    gtk_widget_set_visible(widget(), isInTrouble ? TRUE : FALSE);
    if (!isInTrouble) return;
    gtk_label_set_text(reason_, reasonOf(file_).c_str());
    const std::vector<KeptCopy> copies = file_.copies();
    const auto found = std::ranges::find_if(copies, &KeptCopy::isReadable);
    copy_ = found == copies.end() ? std::nullopt : std::optional(*found);
    gtk_widget_set_visible(copyPlace_, copy_ ? TRUE : FALSE);
    if (copy_)
        gtk_button_set_label(copyButton_,
                             shell::filled(shell::translated("_Use the Copy from {date}"),
                                           {{"date", dateOf(copy_->changed)}})
                                 .c_str());
}

void FileTrouble::openInEditor() {
    const Text address(g_filename_to_uri(file_.path().c_str(), nullptr, nullptr));
    gtk_show_uri(GTK_WINDOW(gtk_widget_get_root(widget())), address.get(), GDK_CURRENT_TIME);
}

}  // namespace settings
