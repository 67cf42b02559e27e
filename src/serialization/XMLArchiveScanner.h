#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string_view>

#include "serialization/ArchiveNode.h"

namespace vorix::Serialization {

// The purpose-made scanner under `XMLArchive`'s reader. It is no general XML parser: it knows
// the three tags of the archive and the way the writer writes them, and it builds a tree of
// offsets into the text without copying it. Every access stays inside [text, text + size), so
// any byte sequence, truncated or hostile, ends in a failure text and never in a stray read.
// The archive's thread only.
class XMLArchiveScanner {
  public:
    // `text` may be null (a writer has nothing to scan); it must outlive the scanner.
    XMLArchiveScanner(const char* text, std::size_t size) noexcept;
    XMLArchiveScanner(const XMLArchiveScanner&) = delete;
    XMLArchiveScanner& operator=(const XMLArchiveScanner&) = delete;

    // Finds the first element among the first 1000 tags, passing over the declaration and
    // comments, and parses its open tag into a `Root` node.
    ArchiveNode* FindRoot();
    // Parses `node`'s open tag and, unless `headerOnly`, everything up to its close tag,
    // building the children and entering objects in the id map.
    void ParseNode(ArchiveNode* node, bool headerOnly);
    // The value of `key` in `node`'s open tag, found by plain text search; none when absent.
    std::optional<std::string_view> GetTagValue(const ArchiveNode& node,
                                                std::string_view key) const;
    // The object node whose id, as read from the document, is `id`; or null.
    const ArchiveNode* FindObjectById(std::uint64_t id) const;

    // The node's name, or none for a node without a name. Any thread.
    static std::optional<std::string_view> NameOf(const ArchiveNode& node);
    // The attribute's value text: empty when its close tag came before the end of its open tag.
    static std::string_view ValueOf(const ArchiveNode& node);

    // The size of the loaded text.
    std::size_t TextSize() const noexcept {
        return static_cast<std::size_t>(mLoadStreamEnd - mLoadStream);
    }

  private:
    ArchiveNode* NewNode(ArchiveNode::Kind kind, const char* start, ArchiveNode* parent);
    void ParseHeader(ArchiveNode& node);
    void ParseContainer(ArchiveNode& node);
    const char* ParseAttributeBody(ArchiveNode& node);
    const char* CloseContainer(ArchiveNode& node, const char* closeTag);

    const char* Find(char wanted, const char* from, const char* to) const;
    const char* FindText(std::string_view wanted, const char* from, const char* to) const;
    bool StartsWith(const char* at, std::string_view prefix) const;

    const char* mLoadStream;
    const char* mLoadStreamEnd;
    std::deque<ArchiveNode> mNodes;  // every node, flat: a deep tree never recurses to free
    std::map<std::uint64_t, ArchiveNode*> mIdMap;
};

}  // namespace vorix::Serialization
