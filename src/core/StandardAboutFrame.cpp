#include "core/StandardAboutFrame.h"

#include "core/PluginCore.h"
#include "core/PluginUIRoot.h"

namespace vorix {

AboutFrame* CreateStandardAboutFrame(PluginUIRoot& root, Frame* parent, std::int32_t pictureId,
                                     Point pictureSize) {
    Frame* covered = parent != nullptr ? parent : root.GetRootFrame();
    if (covered == nullptr) return nullptr;
    const ZORPluginMetaClass& product = root.GetCore()->MetaClass();
    AboutFrame::Credits credits;
    credits.pictureId = pictureId;
    credits.pictureSize = pictureSize;
    credits.text = kAboutCredit;
    credits.version = product.GetProductName() + " " + product.GetVersion();
    return new AboutFrame(*covered, &root, std::move(credits));
}

}  // namespace vorix
