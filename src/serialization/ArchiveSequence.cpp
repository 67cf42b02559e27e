#include "serialization/ArchiveSequence.h"

#include <cstdio>

#include "serialization/Archive.h"
#include "serialization/EelException.h"

namespace vorix::Serialization {
namespace {

constexpr const char* kSequenceTypeName = "__archive_sequence__";
constexpr std::string_view kSizeName = "__size__";
constexpr std::string_view kIndexExceeded =
    "ArchiveSequence: index exceeded stated size of sequence";

}  // namespace

const char* ArchiveSequenceBase::GetTypeName() const {
    return kSequenceTypeName;
}

void ArchiveSequenceBase::Write(Archive& archive) {
    archive.WriteInt(kSizeName, mSize);
}

void ArchiveSequenceBase::Read(Archive& archive) {
    mSize = archive.ReadInt(kSizeName, 0);
}

ArchiveSequence::ArchiveSequence(Archive& archive, std::int32_t count, std::string_view name)
    : ArchiveSequenceBase(count), mWriter(&archive) {
    if (archive.BeginWriteObject(this, name) == 0) return;
    try {
        Write(archive);
    } catch (...) {
        archive.EndWriteObject(this);
        throw;
    }
}

ArchiveSequence::ArchiveSequence(Archive& archive, std::string_view name) : mReader(&archive) {
    archive.BeginReadObject(name, kSequenceTypeName);
    try {
        Read(archive);
    } catch (...) {
        archive.EndReadObject();
        throw;
    }
}

ArchiveSequence::~ArchiveSequence() {
    // Closing a scope that the constructor opened cannot fail on a sound archive; a destructor
    // must not throw whatever happens.
    try {
        if (mWriter != nullptr) {
            mWriter->EndWriteObject(this);
        } else {
            mReader->EndReadObject();
        }
    } catch (...) {
    }
}

std::string_view ArchiveSequence::NextElementName() {
    VORIX_EEL_CHECK(mCurIndex < mSize, Eel::Exception, kIndexExceeded);
    const int length = std::snprintf(mName, sizeof mName, "%d", static_cast<int>(mCurIndex));
    ++mCurIndex;
    return std::string_view(mName, static_cast<std::size_t>(length));
}

void ArchiveSequence::WriteBool(bool value) {
    Target().WriteBool(NextElementName(), value);
}
bool ArchiveSequence::ReadBool() {
    return Target().ReadBool(NextElementName());
}
bool ArchiveSequence::ReadBool(bool defaultValue) {
    return Target().ReadBool(NextElementName(), defaultValue);
}

void ArchiveSequence::WriteInt(std::int32_t value) {
    Target().WriteInt(NextElementName(), value);
}
std::int32_t ArchiveSequence::ReadInt() {
    return Target().ReadInt(NextElementName());
}
std::int32_t ArchiveSequence::ReadInt(std::int32_t defaultValue) {
    return Target().ReadInt(NextElementName(), defaultValue);
}

void ArchiveSequence::WriteInt64(std::int64_t value) {
    Target().WriteInt64(NextElementName(), value);
}
std::int64_t ArchiveSequence::ReadInt64() {
    return Target().ReadInt64(NextElementName());
}
std::int64_t ArchiveSequence::ReadInt64(std::int64_t defaultValue) {
    return Target().ReadInt64(NextElementName(), defaultValue);
}

void ArchiveSequence::WriteFloat(double value) {
    Target().WriteFloat(NextElementName(), value);
}
double ArchiveSequence::ReadFloat() {
    return Target().ReadFloat(NextElementName());
}
double ArchiveSequence::ReadFloat(double defaultValue) {
    return Target().ReadFloat(NextElementName(), defaultValue);
}

void ArchiveSequence::WriteString(std::string_view value) {
    Target().WriteString(NextElementName(), value);
}
std::string ArchiveSequence::ReadString() {
    return Target().ReadString(NextElementName());
}
std::string ArchiveSequence::ReadString(std::string_view defaultValue) {
    return Target().ReadString(NextElementName(), defaultValue);
}

void ArchiveSequence::WriteBinary(const void* data, std::size_t size) {
    Target().WriteBinary(NextElementName(), data, size);
}
std::unique_ptr<std::uint8_t[]> ArchiveSequence::ReadBinary(std::size_t& outSize) {
    return Target().ReadBinary(NextElementName(), outSize);
}

void ArchiveSequence::WriteObject(Serializable* object) {
    Target().WriteObject(NextElementName(), object);
}
void ArchiveSequence::ReadObject(Serializable*& outObject) {
    Target().ReadObject(NextElementName(), outObject);
}

void ArchiveSequence::WriteObjectRef(std::uint64_t id) {
    Target().WriteObjectRef(NextElementName(), id);
}
std::uint64_t ArchiveSequence::ReadObjectRef() {
    return Target().ReadObjectRef(NextElementName());
}

}  // namespace vorix::Serialization
