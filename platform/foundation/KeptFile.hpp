#pragma once

#include <string>
#include <system_error>

/// Keeps a file that is about to be replaced, under a name of its own beside it:
/// "NAME.unreadable-1" or the next free number; "NAME.copy-1" if the user replaces a good one.
/// Unless commit() is called, the destructor undoes
/// keep().
///
///     KeptFile kept(path);
///     kept.keep();
///     ... write the new file ...
///     kept.commit();
class KeptFile {
 public:
    /// What stands behind the file's name, before the number.
    static constexpr const char* unreadable = ".unreadable-";
    static constexpr const char* copy = ".copy-";

    /// `path` is no symbolic link. `mark` is one of the two above.
    explicit KeptFile(std::string path, const char* mark = unreadable)
        : path_(std::move(path)), mark_(mark) {}
    ~KeptFile();
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;

    /// Needs no permission to read the file. Nothing is made where there is no file, or where an
    /// earlier one that was kept has the same contents; no earlier one is ever replaced.
    std::error_code keep();
    void commit() { way_ = Way::Nothing; }

 private:
    enum class Way {
        Nothing,
        Linked,   ///< The file has both names.
        Renamed,  ///< The file system or the file's owner allows no link.
    };

    std::error_code takeName();

    std::string path_;
    const char* mark_;
    std::string keptPath_;
    Way way_ = Way::Nothing;
};
