#include "serialization/XMLArchiveScanner.h"

#include <algorithm>
#include <string>
#include <vector>

#include "serialization/XMLArchiveParseException.h"
#include "serialization/XMLArchiveTexts.h"
#include "serialization/XMLValueText.h"

namespace vorix::Serialization {
namespace {

using namespace XMLArchiveTexts;

// Past this many tags without an element the text is taken not to be an archive.
constexpr int kRootSearchTagLimit = 1000;

bool IsAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

}  // namespace

XMLArchiveScanner::XMLArchiveScanner(const char* text, std::size_t size) noexcept
    : mLoadStream(text), mLoadStreamEnd(text == nullptr ? nullptr : text + size) {}

ArchiveNode* XMLArchiveScanner::FindRoot() {
    ArchiveNode* root = nullptr;
    const char* position = mLoadStream;
    for (int tag = 0; tag < kRootSearchTagLimit && root == nullptr; ++tag) {
        const char* open = Find('<', position, mLoadStreamEnd);
        if (open == nullptr) break;
        if (open + 1 < mLoadStreamEnd && IsAsciiLetter(open[1])) {
            root = NewNode(ArchiveNode::Kind::Root, open, nullptr);
            break;
        }
        const char* close = Find('>', open, mLoadStreamEnd);
        if (close == nullptr) break;
        position = close + 1;
    }
    const bool rootFound = root != nullptr;
    VORIX_EEL_CHECK(rootFound, XMLArchiveParseException, kCantFindRoot);
    ParseNode(root, true);
    return root;
}

void XMLArchiveScanner::ParseNode(ArchiveNode* node, bool headerOnly) {
    VORIX_EEL_CHECK(node != nullptr && node->mStart != nullptr, Eel::Exception, kNodeIsNull);
    ParseHeader(*node);
    if (headerOnly) return;
    switch (node->mKind) {
        case ArchiveNode::Kind::Root:
        case ArchiveNode::Kind::Object:
            ParseContainer(*node);
            return;
        case ArchiveNode::Kind::Attribute:
            ParseAttributeBody(*node);
            return;
    }
    const bool kindIsKnown = false;
    VORIX_EEL_CHECK(kindIsKnown, XMLArchiveParseException,
                    std::string(kUnknownNodeType) + std::to_string(static_cast<int>(node->mKind)));
}

void XMLArchiveScanner::ParseHeader(ArchiveNode& node) {
    const char* close = Find('>', node.mStart, mLoadStreamEnd);
    VORIX_EEL_CHECK(close != nullptr, XMLArchiveParseException, kExpectedGreater);
    node.mOpenEnd = close + 1;
    const char* nameKey = FindText(kNameKey, node.mStart, close);
    if (nameKey == nullptr) return;
    const char* nameStart = nameKey + kNameKey.size();
    if (const char* nameEnd = Find('"', nameStart, close)) {
        node.mNameStart = nameStart;
        node.mNameEnd = nameEnd;
    }
}

// Walks the content of a root or object up to its close tag. Nested objects are kept on an
// explicit stack rather than by recursion, so that no depth of nesting can exhaust the stack.
void XMLArchiveScanner::ParseContainer(ArchiveNode& node) {
    node.mChildren.clear();
    std::vector<ArchiveNode*> open{&node};
    const char* position = node.mOpenEnd;
    while (!open.empty()) {
        ArchiveNode& current = *open.back();
        const char* tag = Find('<', position, mLoadStreamEnd);
        VORIX_EEL_CHECK(tag != nullptr, XMLArchiveParseException, kExpectedLess);
        if (tag + 1 < mLoadStreamEnd && tag[1] == '/') {
            position = CloseContainer(current, tag);
            open.pop_back();
        } else if (StartsWith(tag, kObjectOpen)) {
            ArchiveNode* child = NewNode(ArchiveNode::Kind::Object, tag, &current);
            ParseHeader(*child);
            open.push_back(child);
            position = child->mOpenEnd;
        } else if (StartsWith(tag, kAttributeOpen)) {
            ArchiveNode* child = NewNode(ArchiveNode::Kind::Attribute, tag, &current);
            ParseHeader(*child);
            position = ParseAttributeBody(*child);
        } else {
            // A comment, or any tag the archive does not know, is passed over.
            const char* close = Find('>', tag, mLoadStreamEnd);
            VORIX_EEL_CHECK(close != nullptr, XMLArchiveParseException, kExpectedGreater);
            position = close + 1;
        }
    }
}

// Ends a root or object at `closeTag` and answers where scanning goes on. Only the two known
// close tags set the end; an object's id enters the id map as the document spells it, read with
// base 0, so that a zero-padded id reads as octal: saved documents have always read so.
const char* XMLArchiveScanner::CloseContainer(ArchiveNode& node, const char* closeTag) {
    if (StartsWith(closeTag, kObjectClose)) {
        node.mEnd = closeTag;
        if (const auto id = GetTagValue(node, "id")) mIdMap[ParseUnsignedBase0(*id)] = &node;
        return closeTag + kObjectClose.size();
    }
    if (StartsWith(closeTag, kRootClose)) {
        node.mEnd = closeTag;
        return closeTag + kRootClose.size();
    }
    const char* close = Find('>', closeTag, mLoadStreamEnd);
    VORIX_EEL_CHECK(close != nullptr, XMLArchiveParseException, kExpectedGreater);
    return close + 1;
}

const char* XMLArchiveScanner::ParseAttributeBody(ArchiveNode& node) {
    const char* close = FindText(kAttributeClose, node.mStart, mLoadStreamEnd);
    VORIX_EEL_CHECK(close != nullptr, XMLArchiveParseException, kExpectedAttClose);
    node.mEnd = close;
    return close + kAttributeClose.size();
}

std::optional<std::string_view> XMLArchiveScanner::GetTagValue(const ArchiveNode& node,
                                                               std::string_view key) const {
    const char* tagEnd = node.mOpenEnd;
    const char* found = FindText(key, node.mStart, tagEnd);
    if (found == nullptr) return std::nullopt;
    const char* open = Find('"', found + key.size(), tagEnd);
    VORIX_EEL_CHECK(open != nullptr, XMLArchiveParseException,
                    std::string(kNoQuotedValue) + std::string(kForAttribute) + std::string(key) +
                        "'\n" + std::string(kCurrentNodeIs) + "\n" +
                        std::string(node.mStart, tagEnd));
    const char* close = Find('"', open + 1, tagEnd);
    VORIX_EEL_CHECK(close != nullptr, XMLArchiveParseException, kNoQuotedValue);
    return std::string_view(open + 1, static_cast<std::size_t>(close - open - 1));
}

const ArchiveNode* XMLArchiveScanner::FindObjectById(std::uint64_t id) const {
    const auto entry = mIdMap.find(id);
    return entry == mIdMap.end() ? nullptr : entry->second;
}

std::optional<std::string_view> XMLArchiveScanner::NameOf(const ArchiveNode& node) {
    if (node.mNameStart == nullptr) return std::nullopt;
    return std::string_view(node.mNameStart,
                            static_cast<std::size_t>(node.mNameEnd - node.mNameStart));
}

std::string_view XMLArchiveScanner::ValueOf(const ArchiveNode& node) {
    if (node.mOpenEnd == nullptr || node.mEnd == nullptr || node.mEnd < node.mOpenEnd) return {};
    return std::string_view(node.mOpenEnd, static_cast<std::size_t>(node.mEnd - node.mOpenEnd));
}

ArchiveNode* XMLArchiveScanner::NewNode(ArchiveNode::Kind kind, const char* start,
                                        ArchiveNode* parent) {
    ArchiveNode& node = mNodes.emplace_back();
    node.mKind = kind;
    node.mStart = start;
    node.mParent = parent;
    if (parent != nullptr) parent->mChildren.push_back(&node);
    return &node;
}

const char* XMLArchiveScanner::Find(char wanted, const char* from, const char* to) const {
    if (from == nullptr || to == nullptr || from >= to) return nullptr;
    const char* found = std::find(from, to, wanted);
    return found == to ? nullptr : found;
}

const char* XMLArchiveScanner::FindText(std::string_view wanted, const char* from,
                                        const char* to) const {
    if (from == nullptr || to == nullptr || from >= to) return nullptr;
    const char* found = std::search(from, to, wanted.begin(), wanted.end());
    return found == to ? nullptr : found;
}

bool XMLArchiveScanner::StartsWith(const char* at, std::string_view prefix) const {
    return static_cast<std::size_t>(mLoadStreamEnd - at) >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), at);
}

}  // namespace vorix::Serialization
