#include "serialization/ObjectSerializerHub.h"

#include "ArchiveTestSupport.h"

namespace vorix::Serialization::test {
namespace {

using Log = std::vector<std::string>;

// Notes each call in a shared log, saving and loading its name; may run a step while it saves.
struct Member : ObjectSerializerSatellite {
    Member(Log& log, std::string name) : log(log), name(std::move(name)) {}
    void SaveForHub(ObjectSerializerHub&, Archive& archive) override {
        log.push_back("save " + name);
        archive.WriteString(name, name);
        if (during) during();
    }
    void LoadForHub(ObjectSerializerHub&, Archive& archive) override {
        log.push_back("load " + archive.ReadString(name));
    }
    Log& log;
    std::string name;
    std::function<void()> during;
};

TEST(ObjectSerializerHub, LinksAreKeptAtBothEndsOnceEachAndUndoneByEitherEnd) {
    Log log;
    ObjectSerializerHub hub;
    auto member = std::make_unique<Member>(log, "m");
    {
        ObjectSerializerHub shortLived;
        for (ObjectSerializerHub* linking : {&hub, &hub, &shortLived})
            linking->Attach(*member);
        EXPECT_EQ(member->Hubs(), (std::vector<ObjectSerializerHub*>{&hub, &shortLived}));
    }
    EXPECT_EQ(member->Hubs(), std::vector<ObjectSerializerHub*>{&hub});
    EXPECT_EQ(hub.Satellites(), std::vector<ObjectSerializerSatellite*>{member.get()});
    hub.Detach(*member);
    EXPECT_TRUE(member->Hubs().empty());
    hub.Attach(*member);
    member.reset();
    EXPECT_TRUE(hub.Satellites().empty());
}

TEST(ObjectSerializerHub, FamilySavesAndLoadsInLinkOrderSkippingMembersDestroyedMeanwhile) {
    Log log;
    ObjectSerializerHub hub;
    Member b(log, "b"), a(log, "a");
    auto gone = std::make_unique<Member>(log, "gone");
    for (Member* member : {&b, &a, gone.get()})
        hub.Attach(*member);
    a.during = [&gone] { gone.reset(); };
    Reader reader(WriteDocument([&hub](XMLArchive& writer) { hub.SaveSatellites(writer); }));
    hub.LoadSatellites(reader.archive);
    EXPECT_EQ(log, (Log{"save b", "save a", "load b", "load a"}));
}

}  // namespace
}  // namespace vorix::Serialization::test
