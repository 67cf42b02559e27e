#pragma once

#include <cstdint>

#include "framework/ErrorFrame.h"

namespace vorix {

class PluginUIRoot;

// The maker's credit shown on the about panel.
inline constexpr const char* kAboutCredit = "Zorvane Sound Works - made for careful listening";

// Editor thread. The about panel as an engine's CreateAboutFrame makes it: the picture
// `pictureId` (0 for none) of `pictureSize` centred, the maker's credit at the top right, and the
// product's name and version at the top left, read from the product's description. The panel is
// a child of `parent` (the root frame when null) and tells `root` when it is clicked away.
AboutFrame* CreateStandardAboutFrame(PluginUIRoot& root, Frame* parent, std::int32_t pictureId = 0,
                                     Point pictureSize = {});

}  // namespace vorix
