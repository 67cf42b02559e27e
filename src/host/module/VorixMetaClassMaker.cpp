// The product of the Vorix plug-in file.

#include "host/ModuleMetaClass.h"
#include "host/ZORRtasVorixMetaClass.h"

namespace vorix {

std::unique_ptr<ZORPluginMetaClass> MakeModuleMetaClass() {
    return std::make_unique<ZORRtasVorixMetaClass>();
}

}  // namespace vorix
