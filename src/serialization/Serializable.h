#pragma once

#include <cstdint>
#include <string_view>

namespace vorix::Serialization {

class Archive;

// An object that writes and reads itself by name through an `Archive`. Its id is 0 until an
// archive first writes it; an object referred to more than once is then stored only once.
class Serializable {
  public:
    Serializable() = default;
    // A copy is a different object: it has not been written anywhere, whatever the original was.
    Serializable(const Serializable&) noexcept {}
    Serializable& operator=(const Serializable&) noexcept { return *this; }
    virtual ~Serializable() = default;

    // The name of the object's kind as stored in the archive; never null. Any thread.
    virtual const char* GetTypeName() const = 0;
    // Writes the object's values by name. Called by `Save` only when the object is new.
    virtual void Write(Archive& archive) = 0;
    // Reads the object's values by name, in any order. Called by `Load`.
    virtual void Read(Archive& archive) = 0;

    // Writes the object in a scope named `name` if the archive has not seen it yet, closing the
    // scope even when writing fails; does nothing for an object already written. The archive's
    // thread; may throw.
    void Save(Archive& archive, std::string_view name);
    // Enters the object scope named `name` (which must hold this object's type), reads the object
    // and leaves the scope even when reading fails. The archive's thread; may throw.
    void Load(Archive& archive, std::string_view name);

    // The id given by the last archive that wrote the object, or 0. Any thread.
    std::uint64_t Id() const noexcept { return mId; }

  private:
    friend class Archive;
    std::uint64_t mId = 0;
};

}  // namespace vorix::Serialization
