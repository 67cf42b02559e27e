#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "serialization/Archive.h"
#include "serialization/EelException.h"
#include "serialization/Serializable.h"
#include "serialization/XMLArchive.h"

namespace vorix::Serialization::test {

// What a failing call raised: the first line, the whole text, and whether it was a parse error.
struct Failure {
    bool raised = false;
    bool isParseError = false;
    std::string words;
    std::string text;
};

template <typename Call>
Failure CatchFailure(Call&& call) {
    Failure failure;
    try {
        call();
    } catch (const XMLArchive::ParseException& e) {
        failure = {true, true, e.Words(), e.what()};
    } catch (const Eel::Exception& e) {
        failure = {true, false, e.Words(), e.what()};
    }
    return failure;
}

// Runs `body` between BeginWriting and EndWriting of a writer and answers the whole text,
// the terminating zero byte included.
inline std::string WriteDocument(const std::function<void(XMLArchive&)>& body,
                                 bool embedded = false, const std::string& type = "test") {
    std::ostringstream stream;
    XMLArchive archive(stream, type, embedded);
    archive.BeginWriting();
    body(archive);
    archive.EndWriting();
    return stream.str();
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

// Wraps body lines in a root element, as a writer would.
inline std::string Document(const std::string& body) {
    return "<obj_archive type=\"test\">\n" + body + "</obj_archive>\n";
}

// Ids of a document renumbered 1, 2, 3... in order of first appearance, as the first save of a
// fresh process numbers them. Ids are process-wide, and those from 8 on do not read back
// (they are zero-padded and read as octal), so a test that reads references back needs this.
inline std::string RenumberIds(const std::string& text) {
    std::map<std::string, std::string> numbers;
    const auto numberOf = [&numbers](const std::string& id) {
        const std::string key = std::to_string(std::stoull(id));
        auto [entry, isNew] = numbers.emplace(key, std::to_string(numbers.size() + 1));
        return entry->second;
    };
    static const std::regex idOrReference(R"(id="(\d+)\"|type="ptr">(\d+)<)");
    std::string result;
    auto last = text.cbegin();
    for (std::sregex_iterator it(text.begin(), text.end(), idOrReference), end; it != end; ++it) {
        const std::smatch& match = *it;
        result.append(last, match[0].first);
        if (match[1].matched) {
            std::string number = numberOf(match[1].str());
            result += "id=\"" + std::string(10 - number.size(), '0') + number + "\"";
        } else {
            result += "type=\"ptr\">" + numberOf(match[2].str()) + "<";
        }
        last = match[0].second;
    }
    result.append(last, text.cend());
    return result;
}

// An object with one value of every kind and an optional link to another object, made for
// reading by a factory that keeps what it makes.
class Sample : public Serializable {
  public:
    static constexpr const char* kTypeName = "Sample";
    explicit Sample(std::int32_t count = 0, std::string label = "")
        : count(count), label(std::move(label)) {}
    const char* GetTypeName() const override { return kTypeName; }

    void Write(Archive& archive) override {
        archive.WriteInt("count", count);
        archive.WriteString("label", label);
        if (link != nullptr) archive.WriteObject("link", link);
    }
    void Read(Archive& archive) override {
        count = archive.ReadInt("count");
        label = archive.ReadString("label", "");
        if (archive.HasNode("link")) archive.ReadObject("link", link);
    }

    std::int32_t count = 0;
    std::string label;
    Serializable* link = nullptr;
};

// Makes objects for readers and owns them for the test's length.
struct SamplePool {
    ObjectFactory Factory() {
        return ObjectFactory{{Sample::kTypeName, [this] {
                                  made.push_back(std::make_unique<Sample>());
                                  return made.back().get();
                              }}};
    }
    std::vector<std::unique_ptr<Sample>> made;
};

}  // namespace vorix::Serialization::test
