#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "serialization/Serializable.h"

namespace vorix::Serialization {

class Archive;

// The stored form of a list: an object of type "__archive_sequence__" whose "__size__" says how
// many elements follow. A list without "__size__" reads as empty.
class ArchiveSequenceBase : public Serializable {
  public:
    explicit ArchiveSequenceBase(std::int32_t size = 0) : mSize(size) {}

    const char* GetTypeName() const override;
    void Write(Archive& archive) override;
    void Read(Archive& archive) override;

    // The number of elements, as stated when writing or as found when reading. Any thread.
    std::int32_t Size() const noexcept { return mSize; }

  protected:
    std::int32_t mSize;
};

// A scope over a list of like values whose elements have no names of their own: they are stored
// under "0", "1", ... in order. Constructed, it opens the list's object; destroyed, it closes it.
// Every element operation refuses to go past the stated size, on either side. The archive's
// thread only; allocates and may throw.
class ArchiveSequence : public ArchiveSequenceBase {
  public:
    // Opens a list of `count` elements named `name` in a writer.
    ArchiveSequence(Archive& archive, std::int32_t count, std::string_view name);
    // Enters the list named `name` of a reader.
    ArchiveSequence(Archive& archive, std::string_view name);
    ArchiveSequence(const ArchiveSequence&) = delete;
    ArchiveSequence& operator=(const ArchiveSequence&) = delete;
    ~ArchiveSequence() override;

    void WriteBool(bool value);
    bool ReadBool();
    bool ReadBool(bool defaultValue);
    void WriteInt(std::int32_t value);
    std::int32_t ReadInt();
    std::int32_t ReadInt(std::int32_t defaultValue);
    void WriteInt64(std::int64_t value);
    std::int64_t ReadInt64();
    std::int64_t ReadInt64(std::int64_t defaultValue);
    void WriteFloat(double value);
    double ReadFloat();
    double ReadFloat(double defaultValue);
    void WriteString(std::string_view value);
    std::string ReadString();
    std::string ReadString(std::string_view defaultValue);
    void WriteBinary(const void* data, std::size_t size);
    std::unique_ptr<std::uint8_t[]> ReadBinary(std::size_t& outSize);
    void WriteObject(Serializable* object);
    void ReadObject(Serializable*& outObject);
    void WriteObjectRef(std::uint64_t id);
    std::uint64_t ReadObjectRef();

  private:
    // The name of the next element; raises the index, refusing to pass the stated size.
    std::string_view NextElementName();
    // The archive the list was opened in, whichever side.
    Archive& Target() const { return mWriter != nullptr ? *mWriter : *mReader; }

    Archive* mWriter = nullptr;
    Archive* mReader = nullptr;
    std::int32_t mCurIndex = 0;
    char mName[32] = {};
};

}  // namespace vorix::Serialization
