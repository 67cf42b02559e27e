#pragma once

#include <vector>

namespace vorix::Serialization {

class Archive;
class ObjectSerializerSatellite;

// One end of a many-to-many link between an owner that saves a family of objects together and
// the members of that family. Linking and unlinking update both ends; whichever end is destroyed
// first unlinks itself, so neither side is left pointing at a dead object. The archive's thread.
class ObjectSerializerHub {
  public:
    ObjectSerializerHub() = default;
    ObjectSerializerHub(const ObjectSerializerHub&) = delete;
    ObjectSerializerHub& operator=(const ObjectSerializerHub&) = delete;
    virtual ~ObjectSerializerHub();

    // Links `satellite` to this hub; linking twice keeps one link. Allocates.
    void Attach(ObjectSerializerSatellite& satellite);
    // Unlinks `satellite`; nothing when it is not linked.
    void Detach(ObjectSerializerSatellite& satellite);
    // The linked satellites, in the order they were linked.
    const std::vector<ObjectSerializerSatellite*>& Satellites() const noexcept {
        return mSatellites;
    }

    // Asks every linked satellite to save itself into `archive` for this hub.
    void SaveSatellites(Archive& archive);
    // Asks every linked satellite to load itself from `archive` for this hub.
    void LoadSatellites(Archive& archive);

  private:
    friend class ObjectSerializerSatellite;
    bool IsLinked(const ObjectSerializerSatellite* satellite) const;

    std::vector<ObjectSerializerSatellite*> mSatellites;
};

// The other end: a member of one or more families, which knows how to save and load its part.
class ObjectSerializerSatellite {
  public:
    ObjectSerializerSatellite() = default;
    ObjectSerializerSatellite(const ObjectSerializerSatellite&) = delete;
    ObjectSerializerSatellite& operator=(const ObjectSerializerSatellite&) = delete;
    virtual ~ObjectSerializerSatellite();

    // Writes this member's part of `hub`'s family. The archive's thread; may throw.
    virtual void SaveForHub(ObjectSerializerHub& hub, Archive& archive) = 0;
    // Reads this member's part of `hub`'s family. The archive's thread; may throw.
    virtual void LoadForHub(ObjectSerializerHub& hub, Archive& archive) = 0;

    // The hubs this satellite is linked to, in the order they were linked.
    const std::vector<ObjectSerializerHub*>& Hubs() const noexcept { return mHubs; }

  private:
    friend class ObjectSerializerHub;
    std::vector<ObjectSerializerHub*> mHubs;
};

}  // namespace vorix::Serialization
