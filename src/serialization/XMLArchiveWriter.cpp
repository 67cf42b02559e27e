// The writing side of XMLArchive: one line per value, objects as nested elements.

#include <algorithm>
#include <ios>

#include "serialization/XMLArchive.h"
#include "serialization/XMLArchiveTexts.h"
#include "serialization/XMLValueText.h"

namespace vorix::Serialization {
namespace {

using namespace XMLArchiveTexts;

// Bytes of binary data on one line of the document.
constexpr std::size_t kBinaryBytesPerLine = 32;

std::string WithClosingQuote(std::string_view subject) {
    return std::string(subject) + "'";
}

}  // namespace

XMLArchive::XMLArchive(std::ostream& stream, std::string type, bool embedded)
    : Archive(std::move(type)),
      mOutStream(&stream),
      mObjListStack(1),
      mEmbedded(embedded),
      mScanner(nullptr, 0) {
    RecomputeIndent();
}

XMLArchive::~XMLArchive() = default;

void XMLArchive::BeginWriting() {
    CheckWritable();
    if (!mEmbedded) *mOutStream << kDeclaration;
    *mOutStream << "<obj_archive type=\"" << GetType() << "\">\n";
}

void XMLArchive::EndWriting() {
    CheckWritable();
    *mOutStream << kRootClose << '\n';
    mOutStream->flush();
    // Readers of the document take it as a zero-terminated string.
    mOutStream->put('\0');
}

void XMLArchive::WriteBool(std::string_view name, bool value) {
    WriteAttributeLine(name, kTypeBool, value ? kTrue : kFalse);
}

void XMLArchive::WriteInt(std::string_view name, std::int32_t value) {
    WriteAttributeLine(name, kTypeInt, std::to_string(value));
}

void XMLArchive::WriteInt64(std::string_view name, std::int64_t value) {
    WriteAttributeLine(name, kTypeInt64, std::to_string(value));
}

void XMLArchive::WriteFloat(std::string_view name, double value) {
    CheckWritable();
    mOutStream->setf(std::ios::fixed, std::ios::floatfield);
    mOutStream->precision(16);
    WriteAttributeLine(name, kTypeFloat, FormatFixed16(value));
}

void XMLArchive::WriteString(std::string_view name, std::string_view value) {
    CheckWritable();
    VORIX_EEL_CHECK(!HasSpecialCharacter(value), ParseException,
                    std::string(kIllegalCharacter) + WithClosingQuote(name));
    WriteAttributeLine(name, kTypeString, value);
}

void XMLArchive::WriteBinary(std::string_view name, const void* data, std::size_t size) {
    CheckWritable();
    VORIX_EEL_CHECK(data != nullptr || size == 0, Eel::Exception, "binary data is null");
    ClaimName(name);
    std::string text = mIndent + "<att name=\"" + std::string(name) + "\" type=\"" +
                       std::string(kTypeBinary) + "\" bin_size=\"" + std::to_string(size) + "\">";
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    for (std::size_t offset = 0; offset < size; offset += kBinaryBytesPerLine) {
        text += '\n';
        text += mIndent;
        text += '\t';
        AppendHex(text, bytes + offset, std::min(kBinaryBytesPerLine, size - offset));
    }
    text += '\n';
    text += mIndent;
    text += kAttributeClose;
    text += '\n';
    *mOutStream << text;
}

std::uint64_t XMLArchive::BeginWriteObject(Serializable* object, std::string_view name) {
    CheckWritable();
    const std::uint64_t id = Archive::BeginWriteObject(object, name);
    if (id == 0) return 0;
    const char* type = object != nullptr ? object->GetTypeName() : nullptr;
    *mOutStream << mIndent << "<obj id=\"" << FormatPaddedId(id) << "\" name=\"" << name
                << "\" type=\"" << (type != nullptr ? type : "") << "\">\n";
    RecomputeIndent();
    mObjListStack.emplace_back();
    return id;
}

void XMLArchive::EndWriteObject(Serializable* object) {
    CheckWritable();
    // Only a scope that `BeginWriteObject` opened has a close tag to write.
    if (!IsInnermostOpenObject(object)) return;
    Archive::EndWriteObject(object);
    RecomputeIndent();
    *mOutStream << mIndent << kObjectClose << '\n';
    mObjListStack.pop_back();
}

void XMLArchive::WriteObjectRef(std::string_view name, std::uint64_t id) {
    WriteAttributeLine(name, kTypePointer, std::to_string(id));
}

void XMLArchive::CheckWritable() const {
    VORIX_EEL_CHECK(mOutStream != nullptr, Eel::Exception, kReadOnly);
}

void XMLArchive::ClaimName(std::string_view name) {
    const bool nameIsNewInScope = mObjListStack.back().emplace(name).second;
    VORIX_EEL_CHECK(nameIsNewInScope, Eel::Exception,
                    std::string(kNameNotUnique) + std::string(name));
}

void XMLArchive::WriteAttributeLine(std::string_view name, std::string_view type,
                                    std::string_view value) {
    CheckWritable();
    ClaimName(name);
    *mOutStream << mIndent << "<att name=\"" << name << "\" type=\"" << type << "\">" << value
                << kAttributeClose << '\n';
}

void XMLArchive::RecomputeIndent() {
    mIndent.assign(OpenObjectCount() + static_cast<std::size_t>(mBaseIndent), '\t');
}

}  // namespace vorix::Serialization
