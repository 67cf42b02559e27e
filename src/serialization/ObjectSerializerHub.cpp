#include "serialization/ObjectSerializerHub.h"

#include <algorithm>

namespace vorix::Serialization {
namespace {

template <typename T>
void Remove(std::vector<T*>& list, T* item) {
    list.erase(std::remove(list.begin(), list.end(), item), list.end());
}

}  // namespace

ObjectSerializerHub::~ObjectSerializerHub() {
    for (ObjectSerializerSatellite* satellite : mSatellites)
        Remove(satellite->mHubs, this);
}

void ObjectSerializerHub::Attach(ObjectSerializerSatellite& satellite) {
    if (IsLinked(&satellite)) return;
    mSatellites.push_back(&satellite);
    satellite.mHubs.push_back(this);
}

void ObjectSerializerHub::Detach(ObjectSerializerSatellite& satellite) {
    Remove(mSatellites, &satellite);
    Remove(satellite.mHubs, this);
}

// Both walks go over a copy and skip a satellite unlinked meanwhile: a satellite may unlink
// (or destroy) itself or another while it is called.
void ObjectSerializerHub::SaveSatellites(Archive& archive) {
    const std::vector<ObjectSerializerSatellite*> satellites = mSatellites;
    for (ObjectSerializerSatellite* satellite : satellites) {
        if (IsLinked(satellite)) satellite->SaveForHub(*this, archive);
    }
}

void ObjectSerializerHub::LoadSatellites(Archive& archive) {
    const std::vector<ObjectSerializerSatellite*> satellites = mSatellites;
    for (ObjectSerializerSatellite* satellite : satellites) {
        if (IsLinked(satellite)) satellite->LoadForHub(*this, archive);
    }
}

bool ObjectSerializerHub::IsLinked(const ObjectSerializerSatellite* satellite) const {
    return std::find(mSatellites.begin(), mSatellites.end(), satellite) != mSatellites.end();
}

ObjectSerializerSatellite::~ObjectSerializerSatellite() {
    for (ObjectSerializerHub* hub : mHubs)
        Remove(hub->mSatellites, this);
}

}  // namespace vorix::Serialization
