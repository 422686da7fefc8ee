#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// An empty folder that goes away with everything in it.
class TemporaryFolder {
 public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "tarnwick-XXXXXX";
        path_ = std::filesystem::canonical(mkdtemp(pattern.data()));
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    /// Writes a file, and the folders above it.
    std::string write(const std::string& name, const std::string& contents) const {
        const std::string path = *this / name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << contents;
        return path;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// The number of entries, hidden ones too.
    std::size_t count() const {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }
    mode_t mode(const std::string& name) const {
        struct stat status {};
        return stat((*this / name).c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

 private:
    std::string path_;
};

/// Sets an environment variable, or removes it, for as long as this lives.
class ScopedVariable {
 public:
    ScopedVariable(const char* name, const char* value) : name_(name) {
        const char* before = std::getenv(name);
        wasSet_ = before != nullptr;
        if (before) before_ = before;
        set(value);
    }
    ~ScopedVariable() { set(wasSet_ ? before_.c_str() : nullptr); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

    void set(const char* value) const {
        if (value) {
            setenv(name_, value, 1);
        } else {
            unsetenv(name_);
        }
    }

 private:
    const char* name_;
    std::string before_;
    bool wasSet_ = false;
};
