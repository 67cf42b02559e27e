#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/ChannelConfig.h"
#include "core/ZORParameterInfo.h"
#include "framework/Exceptions.h"

namespace vorix {

class PluginCore;
class PluginPlatform;

// A meter the product shows the host.
struct ZORMeterInfo {
    std::string name;
    int32_t id = 0;
    int32_t position = 1;
    int32_t kind = 0;
};

// The one object per process that describes the product: identity, channel configurations,
// factory programs, the parameter table and how values read as text. Nothing in it depends on an
// instance. The table is built once, in the constructor of the product's class, and is read-only
// from then on, so every const operation may run on any thread without a lock.
class ZORPluginMetaClass {
  public:
    // AcquireMetaClass found no maker, or the maker made nothing.
    class NoMetaClass : public AppFrame::Exception {
      public:
        using AppFrame::Exception::Exception;
    };

    ZORPluginMetaClass();
    ZORPluginMetaClass(const ZORPluginMetaClass&) = delete;
    ZORPluginMetaClass& operator=(const ZORPluginMetaClass&) = delete;

    // The virtual operations, in the order of their slots.

    // Makes the engine object of one instance. Main thread; may throw, the host reports it.
    virtual std::unique_ptr<PluginCore> CreateCore(PluginPlatform* platform,
                                                   const ChannelConfig& config) = 0;
    // Identity texts. Any thread but audio (allocates).
    virtual std::string GetProductName() const = 0;
    virtual std::string GetProductFileName() const = 0;
    virtual std::string GetVersion() const = 0;
    virtual std::string GetCopyright() const = 0;
    // "Zorvane Sound Works" unless the product has a shorter form. Any thread but audio
    // (allocates).
    virtual std::string GetCompanyShortName() const;
    // Replaces `out` with the channel pairs the product offers, in the order offered. Any thread
    // but audio (allocates).
    virtual void GetChannelConfigs(std::vector<ChannelConfig>& out) const = 0;
    // Whether the product makes sound of its own rather than processing its input; no product
    // of this framework does. Any thread; never allocates or locks.
    virtual bool IsInstrument() const { return false; }
    // The factory program document, or null when there is none. Any thread; never allocates or
    // locks.
    virtual const char* GetFactoryPrograms() const;
    // Whether each program keeps its own edited settings across program changes. Any thread; never
    // allocates or locks.
    virtual bool HasProgramBank() const { return true; }
    // Appends the program names of the factory document, in document order; appends nothing for
    // a document without its header or with a line too long for the format. Any thread but audio
    // (allocates).
    virtual void GetFactoryProgramNames(std::vector<std::string>& out) const;
    // Number of programs of an instance. Any thread; never allocates or locks.
    virtual int32_t GetProgramCount() const = 0;
    // Number of rows of the parameter table. Any thread; never allocates or locks.
    virtual int32_t GetParameterCount() const;
    // The names a host lists for the parameter of `id`, longest first, one per line; by default
    // the internal name, empty for an unknown id. Any thread but audio (allocates).
    virtual void GetControlNameSet(std::string& out, int32_t id, const ChannelConfig& config) const;
    // The parameter's own units, else its type's; empty for none or an unknown index. Any thread
    // but audio (allocates).
    virtual void GetUnits(std::string& out, int32_t index) const;
    // Text of a value of the parameter at `index`, cut to `maxChars` unless that is negative;
    // empty for an unknown index. Any thread but audio (allocates).
    virtual void FormatValue(std::string& out, int32_t index, float value, int32_t maxChars) const;
    // FormatValue's text, a blank, then the units; a parameter without units (its own are "*", or
    // its type has none) keeps the blank behind the value. Empty for an unknown index. Any thread
    // but audio (allocates).
    virtual void FormatValueWithUnits(std::string& out, int32_t index, float value,
                                      int32_t maxChars) const;
    // The row at `index`, null outside the table. Any thread; never allocates or locks.
    virtual const ZORParameterInfo* GetParameterInfo(int32_t index) const;
    // The row with this id, null if none. Any thread; never allocates or locks.
    virtual const ZORParameterInfo* FindParameterInfo(int32_t id) const;
    // The index of the row with this id, -1 if none. Any thread; never allocates or locks.
    virtual void FindParameterIndex(int32_t& out, int32_t id) const;
    // Whether the product keeps no settings chunk in host sessions. Any thread; never allocates or
    // locks.
    virtual bool HasNoChunk() const { return false; }
    // Replaces `out` with the meters of a configuration; none by default. Any thread but audio
    // (allocates).
    virtual void GetMeterNames(const ChannelConfig& config, std::vector<ZORMeterInfo>& out) const;
    // "ZOR ", the product name and " Prefs": the product's key among the machine's preferences.
    // Any thread but audio (allocates).
    virtual void GetPreferencesName(std::string& out) const;
    virtual ~ZORPluginMetaClass();

  protected:
    // Appends a parameter unless the validation hook refuses it or its id is known; sets its
    // index, gives a discrete parameter without labels "Off;0" and "On;1", and parses the labels
    // into the value-to-label map. Constructors only: rows handed out before stay valid only
    // because the table is complete before anyone looks at it.
    virtual void AddParameter(const ZORParameterInfo& info);

    // A hook that may refuse parameters; none by default.
    std::function<bool(const ZORParameterInfo&)> validateParameter;

  private:
    std::vector<ZORParameterInfo> parameters_;
};

// Text of a number as the parameter texts use it: `decimals` digits, or whole kilohertz with a
// "k" when `kilo` is set and the value is above 1000. Any thread but audio (allocates).
std::string FormatNumber(float value, int decimals, bool kilo);

// The process-wide meta class, reference-counted: the first acquire makes it through the
// registered maker, each release gives one reference back, and the last one destroys it.
// Any thread; they serialise on one lock and must not be called from the audio thread.
using MetaClassMaker = std::function<std::unique_ptr<ZORPluginMetaClass>()>;
// Registers the maker for the next creation; a meta class alive now stays as it is. The maker
// runs under the singleton's lock, so the meta class it makes must not call these functions.
void SetMetaClassMaker(MetaClassMaker maker);
// Takes a reference, making the meta class first if none is alive. Throws
// ZORPluginMetaClass::NoMetaClass when there is no maker or it makes nothing.
ZORPluginMetaClass* AcquireMetaClass();
// Gives one reference back; a release with none held does nothing.
void ReleaseMetaClass();
// The singleton without counting; null while no reference is held.
ZORPluginMetaClass* GetMetaClass();

// One counted reference to the meta class for the life of a scope or an object, given back even
// when the scope is left by an exception. Main thread.
class MetaClassReference {
  public:
    MetaClassReference() : metaClass_(AcquireMetaClass()) {}
    ~MetaClassReference() { ReleaseMetaClass(); }
    MetaClassReference(const MetaClassReference&) = delete;
    MetaClassReference& operator=(const MetaClassReference&) = delete;

    ZORPluginMetaClass* get() const noexcept { return metaClass_; }
    ZORPluginMetaClass& operator*() const noexcept { return *metaClass_; }

  private:
    ZORPluginMetaClass* metaClass_;
};

}  // namespace vorix
