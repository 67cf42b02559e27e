#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "serialization/Archive.h"
#include "serialization/ArchiveNode.h"
#include "serialization/XMLArchiveParseException.h"
#include "serialization/XMLArchiveScanner.h"

namespace vorix::Serialization {

// The archive as text in the shape of XML: a root element, `att` lines for values and nested
// `obj` elements, written by hand without escaping and read back by a scanner that knows
// exactly that shape. A writer writes to a stream and ends the text with a zero byte; a reader
// works on text in memory, which must stay valid while the reader lives. One thread per archive;
// nothing here may run on the audio thread.
class XMLArchive : public Archive {
  public:
    using ParseException = XMLArchiveParseException;

    // A writer of document type `type`. With `embedded`, the document has no XML declaration, so
    // that it can stand inside a larger text. Writes nothing until `BeginWriting`.
    XMLArchive(std::ostream& stream, std::string type, bool embedded = false);
    // A reader of `size` bytes of `text`. Finds the root element and reads its open tag only;
    // the rest is scanned by `BeginReading`.
    XMLArchive(const char* text, std::size_t size,
               std::optional<ObjectFactory> factory = std::nullopt);
    ~XMLArchive() override;

    // Writer: the declaration (unless embedded) and the root open tag.
    void BeginWriting() override;
    // Reader: scans the whole document and opens the root for lookups.
    void BeginReading() override;
    // Writer: the root close tag, a flush, and the terminating zero byte.
    void EndWriting() override;

    // Typed values, each one line of the document; the archive's thread.
    void WriteBool(std::string_view name, bool value) override;
    bool ReadBool(std::string_view name, bool defaultValue) override;
    bool ReadBool(std::string_view name) override;
    void WriteInt(std::string_view name, std::int32_t value) override;
    std::int32_t ReadInt(std::string_view name, std::int32_t defaultValue) override;
    std::int32_t ReadInt(std::string_view name) override;
    void WriteInt64(std::string_view name, std::int64_t value) override;
    std::int64_t ReadInt64(std::string_view name, std::int64_t defaultValue) override;
    std::int64_t ReadInt64(std::string_view name) override;
    // Writes in fixed notation with 16 places, and leaves the stream set so.
    void WriteFloat(std::string_view name, double value) override;
    double ReadFloat(std::string_view name, double defaultValue) override;
    double ReadFloat(std::string_view name) override;
    // Refuses a value holding any of & < > " ' (there is no escaping).
    void WriteString(std::string_view name, std::string_view value) override;
    std::string ReadString(std::string_view name, std::string_view defaultValue) override;
    std::string ReadString(std::string_view name) override;
    void WriteBinary(std::string_view name, const void* data, std::size_t size) override;
    std::unique_ptr<std::uint8_t[]> ReadBinary(std::string_view name,
                                               std::size_t& outSize) override;

    // Looks only among the values and objects of the innermost open object. The archive's thread,
    // like the object operations that follow.
    bool HasNode(std::string_view name) override;
    void BeginReadObject(std::string_view name, std::string_view type) override;
    std::uint64_t BeginWriteObject(Serializable* object, std::string_view name) override;
    void EndReadObject() override;
    void EndWriteObject(Serializable* object) override;
    void WriteObjectRef(std::string_view name, std::uint64_t id) override;
    std::uint64_t ReadObjectRef(std::string_view name) override;
    void GetTypeOfId(std::uint64_t id, std::string& outType) override;

  private:
    // Writer side.
    void CheckWritable() const;
    void ClaimName(std::string_view name);
    void WriteAttributeLine(std::string_view name, std::string_view type, std::string_view value);
    void RecomputeIndent();

    // Reader side.
    const ArchiveNode* FindChild(std::string_view name) const;
    const ArchiveNode& FindAttribute(std::string_view name, std::string_view type);
    const ArchiveNode& FindObject(std::string_view name);
    void CheckAttrNodeType(const ArchiveNode& node, std::string_view type) const;
    void CheckObjectNodeType(const ArchiveNode& node, std::string_view type) const;
    std::string_view TypeOfObjectNode(const ArchiveNode& node) const;

    std::ostream* mOutStream = nullptr;  // null on a reader
    std::string mIndent;
    int mBaseIndent = 0;  // tabs before everything, for a user that embeds the archive
    std::vector<std::set<std::string, std::less<>>> mObjListStack;  // names used per open scope
    bool mEmbedded = false;

    XMLArchiveScanner mScanner;  // the loaded text, the nodes and the id map
    ArchiveNode* mRootNode = nullptr;
    bool mRootContentParsed = false;
    std::vector<const ArchiveNode*> mNodeStack;
};

}  // namespace vorix::Serialization
