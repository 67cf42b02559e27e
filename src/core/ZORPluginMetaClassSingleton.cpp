// The process-wide meta class: made on first use, shared by every instance, destroyed with the
// last reference.
#include <memory>
#include <mutex>
#include <utility>

#include "core/ZORPluginMetaClass.h"

namespace vorix {

namespace {

struct MetaClassSingleton {
    std::mutex lock;
    MetaClassMaker maker;
    std::unique_ptr<ZORPluginMetaClass> instance;
    int32_t references = 0;
};

MetaClassSingleton& Singleton() {
    static MetaClassSingleton singleton;
    return singleton;
}

}  // namespace

void SetMetaClassMaker(MetaClassMaker maker) {
    MetaClassSingleton& singleton = Singleton();
    const std::lock_guard guard(singleton.lock);
    singleton.maker = std::move(maker);
}

ZORPluginMetaClass* AcquireMetaClass() {
    MetaClassSingleton& singleton = Singleton();
    const std::lock_guard guard(singleton.lock);
    if (singleton.instance == nullptr) {
        if (!singleton.maker) VORIX_THROW(ZORPluginMetaClass::NoMetaClass);
        singleton.instance = singleton.maker();
        if (singleton.instance == nullptr) VORIX_THROW(ZORPluginMetaClass::NoMetaClass);
    }
    ++singleton.references;
    return singleton.instance.get();
}

void ReleaseMetaClass() {
    MetaClassSingleton& singleton = Singleton();
    std::unique_ptr<ZORPluginMetaClass> last;
    {
        const std::lock_guard guard(singleton.lock);
        if (singleton.references == 0) return;
        if (--singleton.references == 0) last = std::move(singleton.instance);
    }
    // `last` is destroyed here, outside the lock, so its destructor may use the singleton.
}

ZORPluginMetaClass* GetMetaClass() {
    MetaClassSingleton& singleton = Singleton();
    const std::lock_guard guard(singleton.lock);
    return singleton.instance.get();
}

}  // namespace vorix
