#include <tuple>

#include "HostTestSupport.h"
#include "vorix-host/HostError.h"

namespace vorix::test {
namespace {

TEST(PlugInFileOpening, RegistersWithTheHostAtLoadAndMakesOneGroupForTwoOpens) {
    PlugInModule module(kModulePath);
    EXPECT_TRUE(module.RegisteredOpenAndClose());
    EXPECT_EQ(module.Group(), nullptr);
    module.Open();
    IProcessGroup* group = module.Group();
    ASSERT_NE(group, nullptr);
    module.Open();
    EXPECT_EQ(module.Group(), group);
    module.Close();
    EXPECT_EQ(module.Group(), group);
    module.Close();
    EXPECT_EQ(module.Group(), nullptr);
}

TEST(PlugInFileOpening, RefusesAnotherVersionAndOpensNothing) {
    PlugInModule module(kModulePath);
    const auto open = reinterpret_cast<PlugInOpenEntryProc>(module.FindEntry(kPlugInOpenExport));
    EXPECT_EQ(open(72), -1);
    EXPECT_EQ(module.Group(), nullptr);
}

// The file's own copies of the framework stay inside it, whatever the host links.
TEST(PlugInFileOpening, ShowsOnlyTheHostsEntries) {
    PlugInModule module(kModulePath);
    EXPECT_NE(module.FindEntry("NewPlugIn"), nullptr);
    EXPECT_EQ(module.FindEntry("_ZN5vorix10PlugInOpenEv"), nullptr);
    EXPECT_EQ(module.FindEntry("_ZN5vorix16AcquireMetaClassEv"), nullptr);
}

TEST(PlugInFileOpening, RefusesWhatItCannotHost) {
    const auto refusal = [](const std::string& path) {
        try {
            PlugInModule module(path);
        } catch (const HostError& error) {
            return std::string(error.what());
        }
        return std::string("loaded");
    };
    EXPECT_EQ(refusal("/nowhere/Vorix.so")
                  .rfind("The plug-in file /nowhere/Vorix.so could not be loaded: ", 0),
              0u);
    EXPECT_EQ(refusal("libm.so.6"), "The file libm.so.6 is not a plug-in file.");
    const PlugInModule loaded(kModulePath);
    EXPECT_EQ(refusal(kModulePath), "The plug-in file " + kModulePath + " is loaded already.");
}

using GroupTest = HostFixture;

TEST_F(GroupTest, NamesTheMakerAndTheProduct) {
    IProcessGroup& group = *module_.Group();
    EXPECT_STREQ(group.GetManufacturerNameSet(), "Zorvane Sound Works\nZOR");
    EXPECT_EQ(group.GetManufacturerID(), 0x5A6F7276);
    EXPECT_STREQ(group.GetProductNameSet(), "Vorix\nVrx");
    EXPECT_TRUE(group.HasGestalt(14));
}

TEST_F(GroupTest, ListsStereoThenMonoRealTimeTypesWithTheirPageTables) {
    const std::vector<EffectTypeInfo> types = module_.EffectTypes();
    ASSERT_EQ(types.size(), 2u);
    EXPECT_EQ(std::tuple(IdText(types[0].id), types[0].nameSet, types[0].pageTables,
                         types[0].inputs, types[0].outputs, types[0].realTime),
              std::tuple("StRT", "Vorix\nVrx", "StereoPageTables", 2, 2, true));
    EXPECT_EQ(std::tuple(IdText(types[1].id), types[1].nameSet, types[1].pageTables,
                         types[1].inputs, types[1].outputs, types[1].realTime),
              std::tuple("mnRT", "Vorix\nVrx", "MonoPageTables", 1, 1, true));
}

TEST_F(GroupTest, GivesEveryTypeTheProductsIdVersionGestaltsAndClass) {
    for (const char* id : {"StRT", "mnRT"}) {
        const IProcessType2& details = module_.FindType(*ParseId(id)).GetDetails();
        EXPECT_EQ(details.GetPlugInID(), Id("Vorx")) << id;
        EXPECT_EQ(details.GetPlugInVersion(), 1) << id;
        EXPECT_EQ(details.GetCategory(), 6) << id;
        EXPECT_EQ(details.GetDSPClass(), Id("rt71")) << id;
        EXPECT_TRUE(details.HasGestalt(8) && details.HasGestalt(30)) << id;
        EXPECT_FALSE(details.HasGestalt(5) || details.HasGestalt(27)) << id;
    }
}

}  // namespace
}  // namespace vorix::test
