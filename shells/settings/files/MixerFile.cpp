#include "shells/settings/files/MixerFile.hpp"

#include "backends/plist/XmlText.hpp"
#include "platform/foundation/FileLock.hpp"
#include "platform/foundation/KeptFile.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/Translation.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>
#include <tuple>
#include <utility>

namespace settings {
namespace {

namespace fs = std::filesystem;
using shell::filled;
using shell::translated;

std::string notWritten(const std::string& reason) {
    return filled(translated("The file cannot be written: {reason}"), {{"reason", reason}});
}

/// The file itself, behind links; the path as it is where that can't be told.
fs::path targetOf(const std::string& path) {
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    return error ? fs::path(path) : target;
}

/// Waits for a lock that another program holds as long as it takes to write. Where no lock can be
/// had, an edit goes on without one: a lock guards only against our own programs.
bool takeLock(FileLock& lock, const std::string& path) {
    const std::string target = targetOf(path);
    makeFoldersAbove(target);
    constexpr int mostTries = 100;
    constexpr std::chrono::milliseconds pause(10);
    for (int tries = 0; tries < mostTries; ++tries) {
        const FileLock::State state = lock.takeFolder(fs::path(target).parent_path());
        if (state != FileLock::State::Taken) return true;
        std::this_thread::sleep_for(pause);
    }
    return false;
}

bool isPresent(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

/// Replacing a file needs no permission to write it, but a user who takes that away from a good
/// file means it.
std::error_code refusalOfSystem(const std::string& path) {
    const bool isWritable = !isPresent(path) || access(path.c_str(), W_OK) == 0;
    return isWritable ? std::error_code() : std::error_code(errno, std::generic_category());
}

/// Whether the name is the file's, a mark behind it and a number.
bool isNameOfCopy(const std::string& name, const std::string& file) {
    return std::ranges::any_of(
        std::initializer_list<const char*>{KeptFile::unreadable, KeptFile::copy},
        [&](const char* mark) {
            const std::string start = file + mark;
            return name.size() > start.size() && name.starts_with(start) &&
                   name.find_first_not_of("0123456789", start.size()) == std::string::npos;
        });
}

}  // namespace

Trouble sentenceFor(const PropertyListEditor::Trouble& refusal) {
    using Refusal = PropertyListEditor::Refusal;
    if (!refusal) return std::nullopt;
    if (*refusal == Refusal::NoForm)
        return translated("The text has characters that the file cannot hold");
    if (*refusal == Refusal::LosesValues)
        return translated("The file cannot be changed without losing values that are unknown here");
    return translated("The file cannot be changed");
}

MixerFile::MixerFile(const std::string& path, Root kind, PropertyValue initial)
    : path_(resolvedPath(path)),
      kind_(kind),
      initial_(std::move(initial)),
      shown_(contentsOf(path_)) {}

MixerFile::~MixerFile() = default;

bool MixerFile::hasRightRoot(const PropertyValue& root) const {
    return kind_ == Root::Array ? root.array() != nullptr : root.dictionary() != nullptr;
}

MixerFile::Contents MixerFile::contentsOf(const std::string& path) const {
    using Kind = FileState::Kind;
    std::error_code error;
    const auto bytes = contentsOfFile(path, NSPropertyList::maximumFileBytes, &error);
    if (error == std::errc::no_such_file_or_directory) return {{Kind::Missing}, "", initial_};
    if (!bytes) return {{Kind::Unreadable, error.message()}, "", initial_};
    if (withoutLeadingBlanks(*bytes).empty()) return {{Kind::Missing}, *bytes, initial_};
    const auto list = PropertyListEditor::reading(*bytes);
    if (!list)
        return {{Kind::Malformed, list.error().reason, list.error().place}, *bytes, initial_};
    if (hasRightRoot(list->root())) return {{Kind::Read}, *bytes, list->root()};
    const char* const element = kind_ == Root::Array ? "array" : "dict";
    std::string reason = filled(translated("the root is no <{element}>"), {{"element", element}});
    return {{Kind::Malformed, std::move(reason)}, *bytes, initial_};
}

/// Reads the file again. Answers whether that differs from what was shown.
bool MixerFile::readAgain() {
    Contents contents = contentsOf(path_);
    // An editor that writes in place empties the file first. To replace it then would leave the
    // editor writing to a file without a name.
    const bool wasRead = shown_.state.kind != FileState::Kind::Missing;
    if (wasRead && contents.state.kind == FileState::Kind::Missing && isPresent(path_))
        contents.state = {FileState::Kind::Malformed, translated("the file is empty")};
    const bool isOther = contents.state != shown_.state || contents.bytes != shown_.bytes;
    shown_ = std::move(contents);
    return isOther;
}

void MixerFile::setChangedHandler(std::function<void(ChangedBy)> handler) {
    handler_ = std::move(handler);
    constexpr double settlingSeconds = 0.1;
    watch_ = std::make_unique<glib::FileWatch>(
        path_, [this] { settling_.start(settlingSeconds, [this] { refresh(); }); },
        glib::FileWatch::Tell::EachChange);
}

void MixerFile::refresh() {
    const auto handler = handler_;
    if (readAgain() && handler) handler(ChangedBy::Others);
}

/// Takes the lock, reads the file again, acts, and tells who changed what is shown.
Trouble MixerFile::locked(const std::function<Trouble()>& action) {
    FileLock lock;
    if (!takeLock(lock, path_)) return translated("Another program is writing the file; try again");
    const bool isOther = readAgain();
    const std::string before = shown_.bytes;
    const FileState stateBefore = shown_.state;
    Trouble trouble = action();
    lock.release();
    const bool isOurs = shown_.bytes != before || shown_.state != stateBefore;
    const auto handler = handler_;
    if (handler && (isOther || isOurs)) handler(isOther ? ChangedBy::Others : ChangedBy::Us);
    return trouble;
}

Trouble MixerFile::edit(const Change& change) {
    return locked([&]() -> Trouble { return changeNow(change); });
}

Trouble MixerFile::changeNow(const Change& change) {
    const FileState& state = shown_.state;
    if (state.kind == FileState::Kind::Unreadable)
        return filled(translated("The file cannot be read: {reason}"), {{"reason", state.reason}});
    if (state.kind == FileState::Kind::Malformed)
        return filled(translated("The file is malformed: {reason}"), {{"reason", state.reason}});
    std::optional<PropertyListEditor> list;
    if (state.kind == FileState::Kind::Missing)
        list = PropertyListEditor::startingWith(initial_);
    else if (auto read = PropertyListEditor::reading(shown_.bytes))
        list = *std::move(read);
    if (!list) return translated("The file cannot be changed");
    const std::string before = list->bytes();
    if (Trouble trouble = change(*list)) return trouble;
    return list->bytes() == before ? std::nullopt : write(*list, OldFile::Dropped);
}

Trouble MixerFile::write(const PropertyListEditor& list, OldFile old) {
    const std::string& bytes = list.bytes();
    if (bytes.size() > NSPropertyList::maximumFileBytes)
        return notWritten(translated("it would be too large to be read again"));
    std::error_code error = old == OldFile::Kept ? std::error_code() : refusalOfSystem(path_);
    if (!error) error = writeFileAtomically(path_, bytes, old);
    if (error) return notWritten(error.message());
    shown_ = {{FileState::Kind::Read}, bytes, list.root()};
    return std::nullopt;
}

Trouble MixerFile::replace(const std::string& bytes, Replace what) {
    return locked([&]() -> Trouble {
        if (what == Replace::Unusable && shown_.state.isUsable())
            return translated("The file can be used again");
        auto list = PropertyListEditor::reading(bytes);
        if (!list || !hasRightRoot(list->root())) return translated("The file cannot be changed");
        if (shown_.state.kind == FileState::Kind::Missing) return write(*list, OldFile::Dropped);
        const bool isGood = shown_.state.kind == FileState::Kind::Read;
        return write(*list, isGood ? OldFile::Copied : OldFile::Kept);
    });
}

Trouble MixerFile::startAnew() {
    const auto list = PropertyListEditor::startingWith(initial_);
    return replace(list ? list->bytes() : "", Replace::Unusable);
}

Trouble MixerFile::reset() {
    const auto list = PropertyListEditor::startingWith(initial_);
    return replace(list ? list->bytes() : "", Replace::Any);
}

Trouble MixerFile::useCopy(const KeptCopy& copy) {
    const Contents contents = contentsOf(copy.path);
    if (contents.state.kind != FileState::Kind::Read) {
        const std::string& reason = contents.state.reason;
        return filled(translated("The copy cannot be used: {reason}"),
                      {{"reason", reason.empty() ? translated("the file is empty") : reason}});
    }
    return replace(contents.bytes, Replace::Any);
}

std::vector<KeptCopy> MixerFile::copies() const {
    const fs::path target = targetOf(path_);
    std::vector<KeptCopy> found;
    std::error_code error;
    for (fs::directory_iterator entry(target.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        struct stat status {};
        const std::string& path = entry->path().native();
        if (!isNameOfCopy(entry->path().filename(), target.filename()) ||
            lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
            continue;
        const bool isReadable = contentsOf(path).state.kind == FileState::Kind::Read;
        found.push_back({path, status.st_mtim.tv_sec, isReadable});
    }
    std::ranges::sort(found, [](const KeptCopy& one, const KeptCopy& other) {
        return std::tie(one.changed, one.path) > std::tie(other.changed, other.path);
    });
    return found;
}

}  // namespace settings
