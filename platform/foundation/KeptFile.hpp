#pragma once

#include <string>
#include <system_error>

/// A file that is about to be replaced, kept under a name of its own beside it:
/// "NAME.unreadable-1", or the next number that is free. Unless commit() is called, what keep() did
/// is undone.
class KeptFile {
 public:
    /// `path` is no symbolic link.
    explicit KeptFile(std::string path) : path_(std::move(path)) {}
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
        Renamed,  ///< Where the folder's file system, or its owner, allows no second name.
    };

    std::error_code takeName();

    std::string path_;
    std::string keptPath_;
    Way way_ = Way::Nothing;
};
