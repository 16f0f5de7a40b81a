// Nodes and groups: the value moves between the group's spelling and the member that its kind uses.
#include "host/db/lists/node_codec.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/lists/object_names.h"

#include <algorithm>
#include <limits>
#include <new>

namespace korvex {

namespace {

constexpr std::size_t kLargestChunk = std::numeric_limits<short>::max();
constexpr int kNextCoordinate = 10;

Chain chunkNode(int code, std::string_view bytes) {
    Chain node = newNode(code);
    node->resval.rbinary.buf = new char[std::max<std::size_t>(bytes.size(), 1)];
    node->resval.rbinary.clen = static_cast<short>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), node->resval.rbinary.buf);
    return node;
}

/// A value that is neither point nor chunk.
Chain plainNode(const GroupCursor& group, const HxDbDatabase& database) {
    const int code = group.code();
    if (valueKind(code) == ValueKind::text) {
        return textNode(code, group.asText());
    }
    Chain node = newNode(code);
    switch (valueKind(code)) {
    case ValueKind::real: node->resval.rreal = group.asReal(); break;
    case ValueKind::int16: node->resval.rint = static_cast<short>(group.asInteger()); break;
    case ValueKind::int32: node->resval.rlong = static_cast<std::int32_t>(group.asInteger()); break;
    case ValueKind::int64: node->resval.mnInt64 = group.asInteger(); break;
    case ValueKind::name: nameOfHandle(database, group.asHandle(), node->resval.rlname); break;
    default: break;
    }
    return node;
}

bool writeName(GroupWriter& out, int code, const zds_name name, const HxDbDatabase& database) {
    std::uint64_t handle = 0;
    const bool known = handleOfName(database, name, handle);
    if (known) {
        out.handle(code, handle);
    }
    return known;
}

bool writeChunk(GroupWriter& out, int code, const zds_binary& chunk) {
    if (chunk.clen < 0 || (chunk.clen > 0 && !chunk.buf)) {
        return false;
    }
    out.chunk(code, std::string_view(chunk.buf, static_cast<std::size_t>(chunk.clen)));
    return true;
}

}  // namespace

NodeReader::NodeReader(std::string_view groups, const GroupFormat& format, const HxDbDatabase& database)
    : m_groups(groups), m_database(database), m_cursor(groups, format) {
    step();
}

Chain NodeReader::next() {
    m_coordinates = 0;
    if (!m_chunk.empty()) {
        return takeChunk();
    }
    if (!m_has) {
        return nullptr;
    }
    m_bytes = m_cursor.bytes();
    const int code = m_cursor.code();
    switch (valueKind(code)) {
    case ValueKind::point: return takePoint();
    case ValueKind::chunk: {
        m_chunk = m_cursor.asChunk();
        m_chunkCode = code;
        step();
        return takeChunk();
    }
    default: break;
    }
    Chain node = plainNode(m_cursor, m_database);
    step();
    return node;
}

Chain NodeReader::takePoint() {
    const int code = m_cursor.code();
    const std::size_t start = m_cursor.offset();
    std::size_t end = start;
    Chain node = newNode(code);
    do {
        node->resval.rpoint[m_coordinates] = m_cursor.asReal();
        end = m_cursor.endOffset();
        ++m_coordinates;
        step();
    } while (m_has && m_coordinates < 3 && m_cursor.code() == code + kNextCoordinate * m_coordinates);
    m_bytes = m_groups.substr(start, end - start);
    return node;
}

Chain NodeReader::takeChunk() {
    const std::string part = m_chunk.substr(0, kLargestChunk);
    if (m_chunk.size() > kLargestChunk || m_bytes.empty()) {
        m_bytes = {};
    }
    m_chunk.erase(0, part.size());
    return chunkNode(m_chunkCode, part);
}

bool writeNode(GroupWriter& out, const resbuf& node, const HxDbDatabase& database, int coordinates) {
    const int code = node.restype == RTDXF0 ? 0 : node.restype;
    const bool binary = database.imp()->format.binary;
    if (code < 0 || code > kLastGroupCode || (binary && !isKnownGroupCode(code))) {
        return false;
    }
    switch (valueKind(code)) {
    case ValueKind::none: return false;
    case ValueKind::real: out.real(code, node.resval.rreal); return true;
    case ValueKind::point:
        for (int i = 0; i < coordinates; ++i) {
            out.real(code + kNextCoordinate * i, node.resval.rpoint[i]);
        }
        return true;
    case ValueKind::int16: out.integer(code, node.resval.rint); return true;
    case ValueKind::int32: out.integer(code, node.resval.rlong); return true;
    case ValueKind::int64: out.integer(code, node.resval.mnInt64); return true;
    case ValueKind::text: out.text(code, textOf(node)); return true;
    case ValueKind::name: return writeName(out, code, node.resval.rlname, database);
    case ValueKind::chunk: return writeChunk(out, code, node.resval.rbinary);
    }
    return false;
}

}  // namespace korvex
