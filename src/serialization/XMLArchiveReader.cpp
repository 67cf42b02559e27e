// The reading side of XMLArchive: lookups by name in the innermost open object, and the
// conversions of value text.

#include "serialization/XMLArchive.h"
#include "serialization/XMLArchiveTexts.h"
#include "serialization/XMLValueText.h"

namespace vorix::Serialization {
namespace {

using namespace XMLArchiveTexts;

std::string WithClosingQuote(std::string_view subject) {
    return std::string(subject) + "'";
}

std::string NameText(const ArchiveNode& node) {
    return std::string(XMLArchiveScanner::NameOf(node).value_or(std::string_view{}));
}

}  // namespace

XMLArchive::XMLArchive(const char* text, std::size_t size, std::optional<ObjectFactory> factory)
    : Archive(std::string(), std::move(factory)), mScanner(text, size) {
    VORIX_EEL_CHECK(text != nullptr, Eel::Exception, kInputStreamNull);
    mRootNode = mScanner.FindRoot();
    SetType(std::string(mScanner.GetTagValue(*mRootNode, "type").value_or(std::string_view{})));
}

void XMLArchive::BeginReading() {
    if (!mRootContentParsed) {
        mScanner.ParseNode(mRootNode, false);
        mRootContentParsed = true;
    }
    if (mNodeStack.empty()) mNodeStack.push_back(mRootNode);
}

bool XMLArchive::ReadBool(std::string_view name, bool defaultValue) {
    return HasNode(name) ? ReadBool(name) : defaultValue;
}

bool XMLArchive::ReadBool(std::string_view name) {
    const std::string_view value = XMLArchiveScanner::ValueOf(FindAttribute(name, kTypeBool));
    const bool valueIsKnown = value == kTrue || value == kFalse;
    VORIX_EEL_CHECK(valueIsKnown, Eel::Exception,
                    std::string(kUnknownBoolean) + WithClosingQuote(name));
    return value == kTrue;
}

std::int32_t XMLArchive::ReadInt(std::string_view name, std::int32_t defaultValue) {
    return HasNode(name) ? ReadInt(name) : defaultValue;
}

std::int32_t XMLArchive::ReadInt(std::string_view name) {
    return ParseIntBase0(XMLArchiveScanner::ValueOf(FindAttribute(name, kTypeInt)));
}

std::int64_t XMLArchive::ReadInt64(std::string_view name, std::int64_t defaultValue) {
    return HasNode(name) ? ReadInt64(name) : defaultValue;
}

std::int64_t XMLArchive::ReadInt64(std::string_view name) {
    return ParseInt64Base0(XMLArchiveScanner::ValueOf(FindAttribute(name, kTypeInt64)));
}

double XMLArchive::ReadFloat(std::string_view name, double defaultValue) {
    return HasNode(name) ? ReadFloat(name) : defaultValue;
}

double XMLArchive::ReadFloat(std::string_view name) {
    return ParseFloat(XMLArchiveScanner::ValueOf(FindAttribute(name, kTypeFloat)));
}

std::string XMLArchive::ReadString(std::string_view name, std::string_view defaultValue) {
    return HasNode(name) ? ReadString(name) : std::string(defaultValue);
}

std::string XMLArchive::ReadString(std::string_view name) {
    return std::string(XMLArchiveScanner::ValueOf(FindAttribute(name, kTypeString)));
}

// The block has one byte more than `bin_size` says. Bytes the value does not fill are zero:
// they are never the previous owner's memory.
std::unique_ptr<std::uint8_t[]> XMLArchive::ReadBinary(std::string_view name,
                                                       std::size_t& outSize) {
    const ArchiveNode& node = FindAttribute(name, kTypeBinary);
    const auto sizeText = mScanner.GetTagValue(node, "bin_size");
    VORIX_EEL_CHECK(sizeText.has_value(), Eel::Exception, kCantFindBinarySize);
    // A size beyond the whole document cannot be data of it: refusing it keeps a damaged or
    // hostile document from asking for any amount of memory.
    const std::int64_t size = ParseDecimal(*sizeText);
    const bool sizeFitsDocument =
        size >= 0 && static_cast<std::uint64_t>(size) <= mScanner.TextSize();
    VORIX_EEL_CHECK(sizeFitsDocument, Eel::Exception, kCantFindBinarySize);

    const auto byteCount = static_cast<std::size_t>(size);
    auto bytes = std::make_unique<std::uint8_t[]>(byteCount + 1);
    DecodeHex(XMLArchiveScanner::ValueOf(node), bytes.get(), byteCount);
    outSize = byteCount;
    return bytes;
}

bool XMLArchive::HasNode(std::string_view name) {
    return FindChild(name) != nullptr;
}

// An object that `ReadObject` is loading is entered by its id, wherever it stands: its name is
// empty, like that of every other object written by reference, so the first object of that
// name in the present scope may be another one, and the present scope may not be where it was
// written at all.
void XMLArchive::BeginReadObject(std::string_view name, std::string_view type) {
    const ArchiveNode* node = nullptr;
    if (const auto id = TakeReferenceBeingLoaded(); id && name.empty()) {
        node = mScanner.FindObjectById(*id);
    }
    if (node == nullptr) node = &FindObject(name);
    CheckObjectNodeType(*node, type);
    mNodeStack.push_back(node);
}

void XMLArchive::EndReadObject() {
    // The root stays open: it is where every lookup ends.
    if (mNodeStack.size() > 1) mNodeStack.pop_back();
}

std::uint64_t XMLArchive::ReadObjectRef(std::string_view name) {
    return static_cast<std::uint64_t>(
        ParseDecimal(XMLArchiveScanner::ValueOf(FindAttribute(name, kTypePointer))));
}

void XMLArchive::GetTypeOfId(std::uint64_t id, std::string& outType) {
    const ArchiveNode* node = mScanner.FindObjectById(id);
    VORIX_EEL_CHECK(node != nullptr, Eel::Exception,
                    std::string(kCantFindIdNode) + WithClosingQuote(std::to_string(id)));
    outType = std::string(TypeOfObjectNode(*node));
}

const ArchiveNode* XMLArchive::FindChild(std::string_view name) const {
    if (mNodeStack.empty()) return nullptr;
    for (const ArchiveNode* child : mNodeStack.back()->mChildren) {
        if (XMLArchiveScanner::NameOf(*child) == name) return child;
    }
    return nullptr;
}

const ArchiveNode& XMLArchive::FindAttribute(std::string_view name, std::string_view type) {
    const ArchiveNode* node = FindChild(name);
    VORIX_EEL_CHECK(node != nullptr, Eel::Exception,
                    std::string(kCantFindNodeWithName) + WithClosingQuote(name));
    CheckAttrNodeType(*node, type);
    return *node;
}

const ArchiveNode& XMLArchive::FindObject(std::string_view name) {
    const ArchiveNode* node = FindChild(name);
    VORIX_EEL_CHECK(node != nullptr, Eel::Exception,
                    std::string(kCantFindNode) + WithClosingQuote(name));
    VORIX_EEL_CHECK(node->mKind == ArchiveNode::Kind::Object, Eel::Exception, kNodeNotObject);
    return *node;
}

void XMLArchive::CheckAttrNodeType(const ArchiveNode& node, std::string_view type) const {
    VORIX_EEL_CHECK(node.mKind == ArchiveNode::Kind::Attribute, ParseException,
                    std::string(kNodeNotAttributeNamed) + WithClosingQuote(NameText(node)));
    const auto found = mScanner.GetTagValue(node, "type");
    VORIX_EEL_CHECK(found.has_value(), ParseException,
                    std::string(kCantFindAttributeType) + WithClosingQuote(NameText(node)));
    VORIX_EEL_CHECK(*found == type, Eel::Exception,
                    std::string(kWrongAttributeType) + WithClosingQuote(NameText(node)));
}

void XMLArchive::CheckObjectNodeType(const ArchiveNode& node, std::string_view type) const {
    const std::string_view found = TypeOfObjectNode(node);
    VORIX_EEL_CHECK(found == type, Eel::Exception,
                    std::string(kWrongObjectType) + NameText(node) +
                        std::string(kExpectedTypeToBe) + WithClosingQuote(type));
}

std::string_view XMLArchive::TypeOfObjectNode(const ArchiveNode& node) const {
    VORIX_EEL_CHECK(node.mKind == ArchiveNode::Kind::Object, ParseException,
                    std::string(kNodeNotObjectNamed) + WithClosingQuote(NameText(node)));
    const auto found = mScanner.GetTagValue(node, "type");
    VORIX_EEL_CHECK(found.has_value(), ParseException,
                    std::string(kCantFindObjectType) + WithClosingQuote(NameText(node)));
    return *found;
}

}  // namespace vorix::Serialization
