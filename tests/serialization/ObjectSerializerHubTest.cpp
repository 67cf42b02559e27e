#include "serialization/ObjectSerializerHub.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "serialization/XMLArchive.h"

namespace vorix::Serialization {
namespace {

// Notes each call; may run an extra step while it is called.
class Member : public ObjectSerializerSatellite {
  public:
    explicit Member(std::vector<std::string>& log, std::string name)
        : log_(log), name_(std::move(name)) {}
    void SaveForHub(ObjectSerializerHub&, Archive& archive) override {
        log_.push_back("save " + name_);
        archive.WriteString(name_, name_);
        if (during) during();
    }
    void LoadForHub(ObjectSerializerHub&, Archive& archive) override {
        log_.push_back("load " + name_ + "=" + archive.ReadString(name_));
    }
    std::function<void()> during;

  private:
    std::vector<std::string>& log_;
    std::string name_;
};

TEST(ObjectSerializerHub, LinksAreKeptAtBothEndsOnceEachAndUndoneByEitherEnd) {
    std::vector<std::string> log;
    ObjectSerializerHub hub;
    auto member = std::make_unique<Member>(log, "m");
    {
        ObjectSerializerHub shortLived;
        hub.Attach(*member);
        hub.Attach(*member);
        shortLived.Attach(*member);
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

TEST(ObjectSerializerHub, FamilySavesAndLoadsInLinkOrder) {
    std::vector<std::string> log;
    ObjectSerializerHub hub;
    Member a(log, "a");
    Member b(log, "b");
    hub.Attach(b);
    hub.Attach(a);
    std::ostringstream stream;
    XMLArchive writer(stream, "family");
    writer.BeginWriting();
    hub.SaveSatellites(writer);
    writer.EndWriting();
    const std::string text = stream.str();
    XMLArchive reader(text.data(), text.size());
    reader.BeginReading();
    hub.LoadSatellites(reader);
    EXPECT_EQ(log, (std::vector<std::string>{"save b", "save a", "load b=b", "load a=a"}));
}

TEST(ObjectSerializerHub, MemberDestroyedDuringSaveIsNotCalled) {
    std::vector<std::string> log;
    ObjectSerializerHub hub;
    Member first(log, "first");
    auto second = std::make_unique<Member>(log, "second");
    hub.Attach(first);
    hub.Attach(*second);
    first.during = [&second] { second.reset(); };
    std::ostringstream stream;
    XMLArchive writer(stream, "family");
    hub.SaveSatellites(writer);
    EXPECT_EQ(log, std::vector<std::string>{"save first"});
}

}  // namespace
}  // namespace vorix::Serialization
