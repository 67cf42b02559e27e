#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <regex>
#include <sstream>

#include "serialization/ArchiveSequence.h"
#include "serialization/XMLArchive.h"

namespace vorix::Serialization::test {

// What a call raised: the first line of the text, and the whole. Only the archive's own failures
// are caught: anything else escapes and fails the test.
struct Failure {
    bool raised = false, isParseError = false;
    std::string words, text;
};

template <typename Call>
Failure CatchFailure(Call&& call) {
    try {
        call();
    } catch (const Eel::Exception& e) {
        const bool isParseError = dynamic_cast<const XMLArchive::ParseException*>(&e) != nullptr;
        return {true, isParseError, e.Words(), e.what()};
    }
    return {};
}

// The whole text a writer makes around `body`, the closing zero byte included.
inline std::string WriteDocument(const std::function<void(XMLArchive&)>& body,
                                 bool embedded = false) {
    std::ostringstream stream;
    XMLArchive archive(stream, "test", embedded);
    archive.BeginWriting();
    body(archive);
    archive.EndWriting();
    return stream.str();
}

// Ids are process-wide and a zero-padded id reads as octal, so a test that reads the references
// of a written document back drops the padding; references themselves are plain decimal.
inline std::string Unpadded(const std::string& text) {
    return std::regex_replace(text, std::regex("id=\"0+"), "id=\"");
}

inline std::string Document(const std::string& body) {
    return "<obj_archive type=\"test\">\n" + body + "</obj_archive>\n";
}

// What a writer makes of `body`, declaration and closing zero byte included.
inline std::string Written(const std::string& body) {
    return "<?xml version=\"1.0\"?>\n" + Document(body) + '\0';
}

// A reader over its own copy of a document, already past BeginReading.
struct Reader {
    explicit Reader(std::string document, std::optional<ObjectFactory> factory = std::nullopt)
        : text(std::move(document)), archive(text.data(), text.size(), std::move(factory)) {
        archive.BeginReading();
    }
    std::string text;
    XMLArchive archive;
};

// The block that `ReadBinary` gives for `name`, with the extra byte at its end.
inline std::vector<std::uint8_t> ReadBlock(Archive& archive, std::string_view name) {
    std::size_t size = 0;
    const auto block = archive.ReadBinary(name, size);
    return std::vector(block.get(), block.get() + size + 1);
}

// An object with a number and an optional link to another object.
class Sample : public Serializable {
  public:
    explicit Sample(std::int32_t count = 0) : count(count) {}
    const char* GetTypeName() const override { return "Sample"; }
    void Write(Archive& archive) override {
        archive.WriteInt("count", count);
        if (link != nullptr) archive.WriteObject("link", link);
    }
    void Read(Archive& archive) override {
        count = archive.ReadInt("count", 0);
        if (archive.HasNode("link")) archive.ReadObject("link", link);
    }
    std::int32_t count = 0;
    Serializable* link = nullptr;
};

// Makes Samples for readers and owns them for the test's length.
struct SamplePool {
    ObjectFactory Factory() {
        return {{"Sample", [this] { return made.emplace_back(std::make_unique<Sample>()).get(); }}};
    }
    template <typename AnArchive>
    static Sample* Read(AnArchive&& archive, std::string_view name) {
        Serializable* object = nullptr;
        archive.ReadObject(name, object);
        return static_cast<Sample*>(object);
    }
    std::vector<std::unique_ptr<Sample>> made;
};

// One of everything the format has: every value kind, binary of more than one line, two objects
// that refer to each other, one that refers to itself, and a list.
struct SampleDocument {
    static constexpr double kFloats[] = {-2.5, 1.0 / 3.0, 1.23456789e-12};
    std::string Text() {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<std::uint8_t>(i * 8 + 7);
        outer.link = &inner;
        inner.link = &outer;
        self.link = &self;
        return WriteDocument([this](XMLArchive& a) {
            a.WriteBool("yes", true);
            a.WriteBool("no", false);
            a.WriteInt64("big", INT64_MIN);
            for (std::size_t i = 0; i < std::size(kFloats); ++i)
                a.WriteFloat(std::to_string(i), kFloats[i]);
            a.WriteString("s", "two words\nand a line");
            a.WriteBinary("bin", bytes.data(), bytes.size());
            a.WriteObjectRef("p", 987654321012ULL);
            a.WriteObject("top", &outer);
            a.WriteObject("self", &self);
            ArchiveSequence list(a, 1, "list");
            list.WriteString("element");
        });
    }
    std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(33);
    Sample outer{1}, inner{2}, self{3};
};

}  // namespace vorix::Serialization::test
