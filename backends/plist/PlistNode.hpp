#pragma once

#include <plist/plist.h>

#include <memory>
#include <type_traits>

struct PlistNodeDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};

/// Owns a node of the library's tree and all below it.
using PlistNode = std::unique_ptr<std::remove_pointer_t<plist_t>, PlistNodeDeleter>;
