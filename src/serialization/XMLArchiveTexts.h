#pragma once

#include <string_view>

// The words of every XML archive failure, and the fixed pieces of the format. Where a text ends
// in a single quote, the subject (a name, a type or an id) follows and is closed by another.
namespace vorix::Serialization::XMLArchiveTexts {

inline constexpr std::string_view kInputStreamNull = "the input stream is null!";
inline constexpr std::string_view kCantFindRoot = "cant find root node, may not be archive data";
inline constexpr std::string_view kExpectedGreater = "expected '>', got to end of archive";
inline constexpr std::string_view kExpectedLess = "expected '<', got to end of archive";
inline constexpr std::string_view kExpectedAttClose = "expected '</att>', got to end of archive";
inline constexpr std::string_view kNodeIsNull = "node is null, or start is null";
inline constexpr std::string_view kUnknownNodeType = "encountered unknown node type: ";
inline constexpr std::string_view kReadOnly = "archive created as read-only";
inline constexpr std::string_view kNameNotUnique =
    "attribute name is not unique within current scope: ";
inline constexpr std::string_view kIllegalCharacter = "illegal character in '";
inline constexpr std::string_view kCantFindNode = "cant find node '";
inline constexpr std::string_view kCantFindNodeWithName = "cant find node with name = '";
inline constexpr std::string_view kNodeNotObject = "node is not an object";
inline constexpr std::string_view kNodeNotAttributeNamed = "node is not an attribute '";
inline constexpr std::string_view kNodeNotObjectNamed = "node is not an object '";
inline constexpr std::string_view kCantFindAttributeType = "cant find type for attribute '";
inline constexpr std::string_view kCantFindObjectType = "cant find type for object '";
inline constexpr std::string_view kWrongObjectType = "wrong type for object '";
inline constexpr std::string_view kExpectedTypeToBe = "', expected type to be '";
inline constexpr std::string_view kWrongAttributeType = "wrong type for attribute '";
inline constexpr std::string_view kUnknownBoolean = "boolean has unknown value of '";
inline constexpr std::string_view kCantFindBinarySize = "cant find size for binary element";
inline constexpr std::string_view kCantFindIdNode = "cant find requested node for id = '";
inline constexpr std::string_view kNoQuotedValue = "cant find any attribute value in quotes \"*\"";
inline constexpr std::string_view kForAttribute = " for attribute '";
inline constexpr std::string_view kCurrentNodeIs = "current node is : ";

// Characters a string value may not hold, there being no escaping; the single quote is listed
// twice as it always has been.
inline constexpr std::string_view kSpecialCharacters = "&<>\"''";

inline constexpr std::string_view kDeclaration = "<?xml version=\"1.0\"?>\n";
inline constexpr std::string_view kObjectOpen = "<obj";
inline constexpr std::string_view kAttributeOpen = "<att";
inline constexpr std::string_view kObjectClose = "</obj>";
inline constexpr std::string_view kAttributeClose = "</att>";
inline constexpr std::string_view kRootClose = "</obj_archive>";
inline constexpr std::string_view kNameKey = "name=\"";

inline constexpr std::string_view kTypeBool = "bool";
inline constexpr std::string_view kTypeInt = "i";
inline constexpr std::string_view kTypeInt64 = "i64";
inline constexpr std::string_view kTypeFloat = "f";
inline constexpr std::string_view kTypeString = "str";
inline constexpr std::string_view kTypeBinary = "bin";
inline constexpr std::string_view kTypePointer = "ptr";
inline constexpr std::string_view kTrue = "true";
inline constexpr std::string_view kFalse = "false";

}  // namespace vorix::Serialization::XMLArchiveTexts
