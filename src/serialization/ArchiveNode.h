#pragma once

#include <vector>

namespace vorix::Serialization {

// One element of a loaded XML archive, as offsets into the loaded text, which stays in place
// for the reader's life. The value of an attribute is the text from `mOpenEnd` to `mEnd`.
struct ArchiveNode {
    enum class Kind : int { Root = 0, Object = 1, Attribute = 2 };

    Kind mKind = Kind::Root;
    const char* mStart = nullptr;    // the '<' of the open tag
    const char* mEnd = nullptr;      // the '<' of the close tag; null when none was recognised
    const char* mOpenEnd = nullptr;  // just past the '>' of the open tag
    std::vector<ArchiveNode*> mChildren;
    ArchiveNode* mParent = nullptr;
    const char* mNameStart = nullptr;  // null for a node without a name
    const char* mNameEnd = nullptr;
};

}  // namespace vorix::Serialization
