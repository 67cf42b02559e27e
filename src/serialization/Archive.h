#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "serialization/ObjectRecord.h"
#include "serialization/Serializable.h"

namespace vorix::Serialization {

// Makes an empty object of one type for a reader. The object belongs to whoever filled the
// factory: the archive only points at it, so a maker usually keeps what it makes in a list.
using ObjectMaker = std::function<Serializable*()>;
// Type name to maker, filled by the user of a reader.
using ObjectFactory = std::map<std::string, ObjectMaker, std::less<>>;

// An abstract reader and writer of named, typed values nested into named objects. Objects that
// are referred to more than once are stored once and referred to by id. An archive is used by
// one thread; none of its operations may run on the audio thread (they allocate and throw).
// Typed groups come in three forms: write; read with a default, which answers the default when
// the name is absent; and plain read, which fails when the name is absent.
class Archive {
  public:
    // Raised by `WriteObject` for a null object, or one the archive did not record.
    class ObjectNotRecorded : public std::exception {};

    // How many references `ReadObject` follows inside one another before it refuses: a document
    // cannot make the reader recurse without bound.
    static constexpr int kMaxReferenceDepth = 1000;

    explicit Archive(std::string type, std::optional<ObjectFactory> factory = std::nullopt);
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    virtual ~Archive();

    // Every operation below runs on the archive's one thread (main or editor), may allocate and
    // throw, and must never be called from the audio thread.

    // Starts a document.
    virtual void BeginWriting();
    // Makes the document's top-level values readable.
    virtual void BeginReading();
    // Finishes a document.
    virtual void EndWriting();

    // Typed values by name; the archive's thread.
    virtual void WriteBool(std::string_view name, bool value) = 0;
    virtual bool ReadBool(std::string_view name, bool defaultValue) = 0;
    virtual bool ReadBool(std::string_view name) = 0;
    virtual void WriteInt(std::string_view name, std::int32_t value) = 0;
    virtual std::int32_t ReadInt(std::string_view name, std::int32_t defaultValue) = 0;
    virtual std::int32_t ReadInt(std::string_view name) = 0;
    virtual void WriteInt64(std::string_view name, std::int64_t value) = 0;
    virtual std::int64_t ReadInt64(std::string_view name, std::int64_t defaultValue) = 0;
    virtual std::int64_t ReadInt64(std::string_view name) = 0;
    virtual void WriteFloat(std::string_view name, double value) = 0;
    virtual double ReadFloat(std::string_view name, double defaultValue) = 0;
    virtual double ReadFloat(std::string_view name) = 0;
    virtual void WriteString(std::string_view name, std::string_view value) = 0;
    virtual std::string ReadString(std::string_view name, std::string_view defaultValue) = 0;
    virtual std::string ReadString(std::string_view name) = 0;
    virtual void WriteBinary(std::string_view name, const void* data, std::size_t size) = 0;
    // A new block of `outSize` plus 1 bytes, owned by the caller.
    virtual std::unique_ptr<std::uint8_t[]> ReadBinary(std::string_view name,
                                                       std::size_t& outSize) = 0;

    // Writes `object` where it stands if it is new to the archive, then a reference to it
    // under `name`. Raises `ObjectNotRecorded` for a null object.
    virtual void WriteObject(std::string_view name, Serializable* object);
    // Gives back the object referred to under `name`: the one already read for that id, or a new
    // one from the factory, loaded from the document. Null without a factory or for a type the
    // factory does not know. A new object belongs to the factory's owner.
    virtual void ReadObject(std::string_view name, Serializable*& outObject);

    // Whether `name` exists in the innermost open object.
    virtual bool HasNode(std::string_view name) = 0;
    // Enters the object `name`, which must be of type `type`.
    virtual void BeginReadObject(std::string_view name, std::string_view type);
    // Opens an object scope for `object` and answers its new id; answers 0 and opens nothing when
    // the archive has written the object already.
    virtual std::uint64_t BeginWriteObject(Serializable* object, std::string_view name);
    // Leaves the innermost object entered by `BeginReadObject`.
    virtual void EndReadObject();
    // Closes the scope that `BeginWriteObject` opened for `object`; nothing when it opened none.
    virtual void EndWriteObject(Serializable* object);
    // An object id as a plain value; the archive's thread.
    virtual void WriteObjectRef(std::string_view name, std::uint64_t id) = 0;
    virtual std::uint64_t ReadObjectRef(std::string_view name) = 0;
    // The type name of the object stored under `id`.
    virtual void GetTypeOfId(std::uint64_t id, std::string& outType) = 0;

    // The document type. Any thread, while the archive lives.
    const std::string& GetType() const noexcept { return mType; }
    // The record of `id`, or null. The archive's thread.
    const ObjectRecord* FindRecord(std::uint64_t id) const;

  protected:
    void SetType(std::string type) { mType = std::move(type); }
    std::size_t OpenObjectCount() const noexcept { return mObjectStack.size(); }
    bool IsInnermostOpenObject(const Serializable* object) const noexcept;
    // The id of the reference that `ReadObject` is loading, handed to the first
    // `BeginReadObject` that follows and then forgotten, so that a format can enter the object
    // stored under that id rather than the first one of the same (empty) name.
    std::optional<std::uint64_t> TakeReferenceBeingLoaded() noexcept;

  private:
    std::string mType;
    std::vector<Serializable*> mObjectStack;  // objects being written, innermost last
    std::map<std::uint64_t, ObjectRecord> mRecords;
    std::optional<ObjectFactory> mFactory;  // absent on writers
    std::optional<std::uint64_t> mReferenceBeingLoaded;
    int mReferenceDepth = 0;  // references being loaded inside one another
};

}  // namespace vorix::Serialization
