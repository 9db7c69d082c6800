// Follows every address of a file once, within its bounds, before HDF5 does.
#include "io/hdf5/file_structure.h"

#include "core/plain_file.h"
#include "core/stop_flag.h"
#include "io/hdf5/stored_messages.h"

#include <QFile>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace NBrenmark {

namespace {

constexpr quint64 undefinedAddress = ~quint64(0);
constexpr quint64 superblockBytes = 8 + 16 + 4 * 8 + 40; // signature, versions and sizes, addresses, root
/// Chunks of what has no checksum are read whole: more than this of them is in no deck.
constexpr quint64 largestPart = quint64(1) << 26;

enum EMessage : quint16
{
    eExtentMessage = 0x01,
    eTypeMessage = 0x03,
    eOldFillMessage = 0x04,
    eFillMessage = 0x05,
    eLinkMessage = 0x06,
    eExternalMessage = 0x07,
    eLayoutMessage = 0x08,
    eFilterMessage = 0x0B,
    eAttributeMessage = 0x0C,
    eContinuationMessage = 0x10,
    eTableMessage = 0x11
};

/// What of an object header belongs together.
struct SObject
{
    std::optional<SStoredType> type;
    std::optional<SStoredLayout> layout;
    quint64 elements = 0;
    bool hasFilters = false;
};

class CStructure
{
public:
    explicit CStructure(const std::string& path) : file(QFile::decodeName(path.c_str())) {}

    void check()
    {
        if (!openPlainFile(file, QIODevice::Unbuffered).empty())
            return; // the open itself says why
        size = static_cast<quint64>(file.size());
        CFileBytes head = at(0, superblockBytes);
        head.skip(8);
        const quint8 version = head.u8();
        head.require(version <= 1, "its form is a newer one than that of decks");
        head.skip(4);
        head.require(head.u8() == 8 && head.u8() == 8, "its addresses have other sizes than those of decks");
        head.skip(1);
        head.require(head.u16() <= 1024 && head.u16() <= 1024, "its tables are larger than those of decks");
        head.skip(4);
        if (version == 1) {
            head = at(8 + 16, superblockBytes - 8 - 16 + 4);
            head.require(head.u16() <= 1024, "its tables are larger than those of decks");
            head.skip(2); // reserved
        }
        head.require(head.u64() == 0, "it begins elsewhere");
        head.skip(8);
        head.require(head.u64() <= size, "it is cut short"); // where HDF5 put the end
        head.skip(8 + 8);                                    // of a driver; the name of the root
        headers.push_back(head.u64());
        while (!headers.empty()) {
            leaveIfStopped();
            const quint64 address = headers.back();
            headers.pop_back();
            checkHeader(address);
        }
    }

private:
    void requireThere(quint64 address, quint64 count) const
    {
        if (address > size || count > size - address || count > largestPart)
            throw hdf5_error("The file is damaged: " + std::to_string(count) + " bytes are announced at byte " +
                             std::to_string(address) + " of " + std::to_string(size));
    }

    CFileBytes at(quint64 address, quint64 count)
    {
        requireThere(address, count);
        if (address < windowAt || address - windowAt > windowSize() || count > windowSize() - (address - windowAt))
            moveWindow(address, count);
        CFileBytes rest(window, windowAt);
        rest.require(address - windowAt + count <= rest.left(), "the file ends");
        rest.skip(address - windowAt);
        return rest.part(count);
    }

    quint64 windowSize() const { return static_cast<quint64>(window.size()); }

    /// A small file is held whole: its hundreds of parts are not in the order of their places.
    void moveWindow(quint64 address, quint64 count)
    {
        constexpr quint64 smallFile = 0x80000;
        constexpr quint64 leastRead = 0x1000;
        windowAt = size <= smallFile ? 0 : address;
        file.seek(static_cast<qint64>(windowAt));
        window = file.read(static_cast<qint64>(size <= smallFile ? size : std::max(count, leastRead)));
        throwIfUnreadable(file);
    }

    /// Every part of a file is held by one other part: what is met again leads back to itself.
    void visit(const CFileBytes& bytes)
    {
        bytes.require(visited.insert(bytes.place()).second, "a part is in two places, or in itself");
    }

    /// Where messages of an object are. They are taken when it is their turn: held all at once, they would keep a window
    /// each in memory.
    struct SMessages
    {
        quint64 address;
        quint64 bytes;
    };

    // ------------------------------------------------------------ object headers

    void checkHeader(quint64 address)
    {
        CFileBytes head = at(address, 16);
        visit(head);
        head.require(head.u8() == 1, "an object is of another form than those of decks");
        head.skip(1 + 2 + 4); // reserved, number of messages, of references
        const quint64 bytes = head.u32();
        SObject object;
        std::vector<SMessages> chunks{{address + 16, bytes}};
        for (std::size_t i = 0; i < chunks.size(); ++i) { // grows by continuations
            CFileBytes chunk = at(chunks[i].address, chunks[i].bytes);
            if (i > 0)
                visit(chunk);
            while (chunk.left() >= 8) {
                const quint16 kind = chunk.u16();
                const quint16 messageBytes = chunk.u16();
                const bool isShared = (chunk.u8() & 2) != 0; // the message is a reference to one elsewhere
                chunk.skip(3);                               // reserved
                CFileBytes message = chunk.part(messageBytes);
                if (kind == eContinuationMessage) {
                    const quint64 next = message.u64();
                    chunks.push_back({next, message.u64()});
                    requireThere(next, chunks.back().bytes);
                }
                else if (isShared)
                    checkShared(message);
                else
                    checkMessage(kind, message, object);
            }
        }
        if (object.layout && object.type)
            checkValues(object);
    }

    void checkMessage(quint16 kind, CFileBytes& message, SObject& object)
    {
        switch (kind) {
        case eExtentMessage: object.elements = takeExtent(message); return;
        case eTypeMessage: object.type = takeType(message); return;
        case eOldFillMessage:
        case eFillMessage: checkFillValue(message, kind == eOldFillMessage); return;
        case eLinkMessage: checkLink(message); return;
        case eExternalMessage: throw hdf5_error("Values of a dataset are stored in another file, which isn't followed");
        case eLayoutMessage: object.layout = takeLayout(message); return;
        case eFilterMessage:
            checkFilters(message);
            object.hasFilters = true;
            return;
        case eAttributeMessage: checkAttribute(message); return;
        case eTableMessage: {
            const quint64 tree = message.u64();
            checkGroup(tree, message.u64());
            return;
        }
        default: return; // what HDF5 skips, or reads in a fixed size
        }
    }

    /// A type that other objects use as well has a header of its own, which is checked where its link leads to it.
    void checkShared(CFileBytes& message) const
    {
        const quint8 version = message.u8();
        message.skip(version == 1 ? 7 : 1); // the kind of sharing; once with six bytes reserved
        message.require(message.u64() < size, "a shared type isn't in the file");
    }

    /// A link that is in the header itself.
    void checkLink(CFileBytes& message)
    {
        message.require(message.u8() == 1, "a link is of an unknown version");
        const quint8 flags = message.u8();
        const quint8 kind = (flags & 0x08) != 0 ? message.u8() : 0;
        // The order of creation, the encoding of the name.
        message.skip(((flags & 0x04) != 0 ? 8 : 0) + ((flags & 0x10) != 0 ? 1 : 0));
        quint64 nameBytes = 0;
        for (int i = 0; i < 1 << (flags & 3); ++i)
            nameBytes |= quint64(message.u8()) << (8 * i);
        message.skip(nameBytes);
        if (kind == 0)
            headers.push_back(message.u64());
        else
            message.skip(message.u16()); // the text of a link that leads elsewhere
    }

    // ------------------------------------------------------------ groups

    void checkGroup(quint64 treeAddress, quint64 heapAddress)
    {
        CFileBytes head = at(heapAddress, 32);
        visit(head);
        head.signature("HEAP");
        head.skip(4);
        const quint64 bytes = head.u64();
        const quint64 freeBlock = head.u64();
        const quint64 address = head.u64();
        const CFileBytes names = at(address, bytes);
        checkFreeBlocks(names, bytes, freeBlock);
        checkTree(treeAddress, 0, -1, 8, [&](quint64 table, const CFileBytes&) { checkTable(table, names, bytes); });
    }

    /// The free space of a heap of names is a chain that ends in 1.
    static void checkFreeBlocks(const CFileBytes& heap, quint64 bytes, quint64 block)
    {
        constexpr quint64 end = 1;
        for (quint64 steps = 0; block != end && block != undefinedAddress; ++steps) {
            heap.require(block <= bytes && bytes - block >= 16 && steps <= bytes / 16,
                         "free space of a heap is damaged");
            CFileBytes rest = heap;
            rest.skip(block);
            const quint64 next = rest.u64();
            rest.require(rest.u64() <= bytes - block, "free space of a heap is damaged");
            block = next;
        }
    }

    /// \param level     that the node must have; -1: any
    /// \param keyBytes  of one key
    /// \param leaf      is given what each leaf points at, with its key
    template <class TLeaf>
    void checkTree(quint64 address, quint8 type, int level, quint64 keyBytes, TLeaf&& leaf)
    {
        CFileBytes head = at(address, 24); // with the addresses of two neighbours
        visit(head);
        head.signature("TREE");
        head.require(head.u8() == type, "a tree is of another kind");
        const int found = head.u8();
        head.require(level < 0 ? found < 32 : found == level, "a tree has another depth");
        const quint16 count = head.u16();
        CFileBytes body = at(address + 24, count * (keyBytes + 8) + keyBytes);
        for (quint16 i = 0; i < count; ++i) {
            const CFileBytes key = body.part(keyBytes);
            const quint64 child = body.u64();
            if (found > 0)
                checkTree(child, type, found - 1, keyBytes, leaf);
            else
                leaf(child, key);
        }
    }

    void checkTable(quint64 address, const CFileBytes& names, quint64 nameBytes)
    {
        CFileBytes head = at(address, 8);
        visit(head);
        head.signature("SNOD");
        head.require(head.u8() == 1, "a table of links is of an unknown version");
        head.skip(1);
        const quint16 count = head.u16();
        CFileBytes entries = at(address + 8, quint64(count) * 40);
        for (quint16 i = 0; i < count; ++i) {
            const auto checkName = [&](quint64 offset) {
                entries.require(offset < nameBytes, "a name isn't in its heap");
                CFileBytes name = names;
                name.skip(offset);
                name.text(1);
            };
            checkName(entries.u64());
            const quint64 header = entries.u64();
            const quint32 kind = entries.u32();
            entries.require(kind <= 2, "a link is of an unknown kind");
            entries.skip(4); // reserved
            CFileBytes cached = entries.part(16);
            if (kind == 2) // leads elsewhere, by a text
                checkName(cached.u32());
            else
                headers.push_back(header);
        }
    }

    // ------------------------------------------------------------ values

    void checkValues(const SObject& object)
    {
        const SStoredLayout& layout = *object.layout;
        if (layout.address == undefinedAddress)
            return;
        if (layout.kind == SStoredLayout::eChunked) {
            checkTree(layout.address, 1, -1, 8 + 8 * layout.extents.size(), [&](quint64 address, CFileBytes key) {
                const quint32 bytes = key.u32(); // as stored, deflated
                key.require(address <= size && bytes <= size - address, "a chunk isn't in the file");
                key.skip(4);                                                // filters that the chunk skipped
                for (std::size_t i = 0; i + 1 < layout.extents.size(); ++i) // the last is the element's size
                    key.require(key.u64() % layout.extents[i] == 0, "a chunk is in the wrong place");
            });
            return;
        }
        if (layout.address > size || layout.size > size - layout.address)
            throw hdf5_error("The file is damaged: values are announced at byte " + std::to_string(layout.address));
        if (!object.type->isVariableLength)
            return;
        CFileBytes values = at(layout.address, layout.size);
        for (quint64 i = 0; i < object.elements && values.left() >= 16; ++i) {
            const quint32 bytes = values.u32();
            const quint64 heap = values.u64();
            const quint32 index = values.u32();
            if (heap != 0 && heap != undefinedAddress && bytes > 0)
                values.require(bytes <= heapObject(heap, index), "a text isn't in its heap");
        }
    }

    /// Bytes of a text; none for one that isn't there.
    quint64 heapObject(quint64 address, quint32 index)
    {
        auto found = heaps.find(address);
        if (found == heaps.end())
            found = heaps.emplace(address, heapObjects(address)).first;
        const auto object = found->second.find(index);
        return object == found->second.end() ? 0 : object->second;
    }

    /// Bytes of each text of a heap, by its number.
    std::map<quint32, quint64> heapObjects(quint64 address)
    {
        CFileBytes head = at(address, 16);
        head.signature("GCOL");
        head.require(head.u8() == 1, "a heap is of an unknown version");
        head.skip(3); // reserved
        const quint64 bytes = head.u64();
        head.require(bytes >= 16, "a heap is too small");
        CFileBytes body = at(address + 16, bytes - 16);
        std::map<quint32, quint64> objects;
        while (body.left() >= 16) {
            const quint16 index = body.u16();
            body.skip(2 + 4); // number of references, reserved
            const quint64 objectBytes = body.u64();
            if (index == 0) { // free to the end, counted with what is here
                body.require(objectBytes >= 16 && objectBytes - 16 == body.left(), "free space of a heap is damaged");
                break;
            }
            body.require(objectBytes <= body.left(), "a text is larger than its heap");
            body.require(objects.emplace(index, objectBytes).second, "a text is twice in its heap");
            body.skip((objectBytes + 7) / 8 * 8); // each begins at a multiple of eight
        }
        return objects;
    }

    QFile file;
    quint64 size = 0;
    QByteArray window; ///< bytes that are in memory, from windowAt on
    quint64 windowAt = 0;
    std::vector<quint64> headers; ///< that are still to be checked
    std::set<quint64> visited;
    std::map<quint64, std::map<quint32, quint64>> heaps;
};

} // namespace

void checkStructure(const std::string& path) { CStructure(path).check(); }

} // namespace NBrenmark
