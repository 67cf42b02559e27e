#include "serialization/Archive.h"

#include <utility>

#include "serialization/EelException.h"
#include "serialization/ObjectId.h"

namespace vorix::Serialization {
namespace {

constexpr std::string_view kReferencesTooDeep = "object references nested too deeply";

// Holds a depth counter raised for the length of a scope, an exception included.
class DepthGuard {
  public:
    explicit DepthGuard(int& depth) noexcept : mDepth(depth) { ++mDepth; }
    ~DepthGuard() { --mDepth; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

  private:
    int& mDepth;
};

}  // namespace

Archive::Archive(std::string type, std::optional<ObjectFactory> factory)
    : mType(std::move(type)), mFactory(std::move(factory)) {}

Archive::~Archive() = default;

void Archive::BeginWriting() {}

void Archive::BeginReading() {}

void Archive::EndWriting() {}

void Archive::WriteObject(std::string_view name, Serializable* object) {
    if (object == nullptr) throw ObjectNotRecorded();
    object->Save(*this, "");
    if (mRecords.find(object->mId) == mRecords.end()) throw ObjectNotRecorded();
    WriteObjectRef(name, object->mId);
}

void Archive::ReadObject(std::string_view name, Serializable*& outObject) {
    outObject = nullptr;
    const std::uint64_t id = ReadObjectRef(name);
    if (const auto known = mRecords.find(id); known != mRecords.end()) {
        ++known->second.mRefCount;
        outObject = known->second.mObject;
        return;
    }
    if (!mFactory) return;
    VORIX_EEL_CHECK(mReferenceDepth < kMaxReferenceDepth, Eel::Exception, kReferencesTooDeep);

    std::string type;
    GetTypeOfId(id, type);
    const auto maker = mFactory->find(type);
    Serializable* object = maker != mFactory->end() && maker->second ? maker->second() : nullptr;
    // The record goes in before loading, so that a cycle of references meets this object
    // instead of making a second one.
    mRecords[id] = ObjectRecord{id, object, 1, false};
    outObject = object;
    if (object == nullptr) return;
    const DepthGuard depth(mReferenceDepth);
    mReferenceBeingLoaded = id;
    try {
        object->Load(*this, "");
    } catch (...) {
        mReferenceBeingLoaded.reset();
        throw;
    }
    mReferenceBeingLoaded.reset();
}

void Archive::BeginReadObject(std::string_view, std::string_view) {}

std::uint64_t Archive::BeginWriteObject(Serializable* object, std::string_view) {
    if (object != nullptr && mRecords.find(object->mId) != mRecords.end()) return 0;
    mObjectStack.push_back(object);
    const std::uint64_t id = NextObjectId();
    if (object != nullptr) object->mId = id;
    mRecords[id] = ObjectRecord{id, object, 0, false};
    return id;
}

void Archive::EndReadObject() {}

void Archive::EndWriteObject(Serializable* object) {
    if (!IsInnermostOpenObject(object)) return;
    mObjectStack.pop_back();
    if (object == nullptr) return;
    if (const auto record = mRecords.find(object->mId); record != mRecords.end()) {
        record->second.mComplete = true;
    }
}

const ObjectRecord* Archive::FindRecord(std::uint64_t id) const {
    const auto record = mRecords.find(id);
    return record == mRecords.end() ? nullptr : &record->second;
}

std::optional<std::uint64_t> Archive::TakeReferenceBeingLoaded() noexcept {
    return std::exchange(mReferenceBeingLoaded, std::nullopt);
}

bool Archive::IsInnermostOpenObject(const Serializable* object) const noexcept {
    return !mObjectStack.empty() && mObjectStack.back() == object;
}

}  // namespace vorix::Serialization
