#include "serialization/Serializable.h"

#include "serialization/Archive.h"

namespace vorix::Serialization {

void Serializable::Save(Archive& archive, std::string_view name) {
    const std::uint64_t id = archive.BeginWriteObject(this, name);
    // An object the archive has seen opened no scope, and must close none: were it the innermost
    // open object (an object that refers to itself), closing would end its own scope too early.
    if (id == 0) return;
    try {
        Write(archive);
    } catch (...) {
        archive.EndWriteObject(this);
        throw;
    }
    archive.EndWriteObject(this);
}

void Serializable::Load(Archive& archive, std::string_view name) {
    archive.BeginReadObject(name, GetTypeName());
    try {
        Read(archive);
    } catch (...) {
        archive.EndReadObject();
        throw;
    }
    archive.EndReadObject();
}

}  // namespace vorix::Serialization
