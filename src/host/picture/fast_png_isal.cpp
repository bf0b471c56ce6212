// The fast encoder by ISA-L's deflate.
//
// Most rows of a message's picture are clear. A run of clear rows is copied from rows that were compressed earlier;
// each run of other rows is compressed by itself. The parts end at a byte, and none refers to another, so that they can
// be joined.
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>

#include <isa-l/igzip_lib.h>
#include <libdeflate.h>

#include "host/picture/fast_png.h"
#include "host/picture/png_file.h"
#include "host/picture/png_rows.h"

namespace zel::picture {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Uncompressed rows of one part at most: what limits the memory of a large picture.
constexpr std::size_t kPartBytes = std::size_t{2} << 20;

/// Appends parts of a deflate stream.
class Deflater {
  public:
    /// Appends bytes as a part that ends at a byte and refers to nothing before it.
    void Append(std::span<const std::uint8_t> bytes, Bytes& out) {
        // Bytes that can't be compressed are stored, with 5 bytes around every 65,535; the rest is the ends of blocks.
        const std::size_t room = bytes.size() + bytes.size() / 1024 + 1024;
        if (m_room.size() < room) m_room.resize(room);
        isal_deflate_init(&m_stream);
        m_stream.hist_bits = 0;  // the default, a window of 32 KiB; the library's function does not set it
        m_stream.level = 1;
        m_stream.level_buf = m_level.data();
        m_stream.level_buf_size = static_cast<std::uint32_t>(m_level.size());
        m_stream.gzip_flag = IGZIP_DEFLATE;
        m_stream.next_in = const_cast<std::uint8_t*>(bytes.data());
        m_stream.next_out = m_room.data();
        m_stream.avail_out = static_cast<std::uint32_t>(room);
        // The loop for long inputs (2.30) begins with a hash of the stream's address, so that the same bytes would give
        // other ones in each run. The loop for the ends of inputs doesn't, so it gets the first bytes.
        const std::size_t first = std::min<std::size_t>(bytes.size(), 8);
        Deflate(first, SYNC_FLUSH);
        Deflate(bytes.size() - first, FULL_FLUSH);
        out.insert(out.end(), m_room.begin(), m_room.begin() + static_cast<std::ptrdiff_t>(m_stream.total_out));
    }

  private:
    void Deflate(std::size_t size, std::uint16_t flush) {
        m_stream.flush = flush;
        m_stream.avail_in = static_cast<std::uint32_t>(size);
        if (isal_deflate(&m_stream) != COMP_OK || m_stream.avail_in != 0 || m_stream.avail_out == 0)
            throw std::runtime_error("the rows could not be compressed");
    }

    isal_zstream m_stream{};
    Bytes m_level = Bytes(ISAL_DEF_LVL1_DEFAULT);
    Bytes m_room;
};

/// Clear rows of one size, compressed when they are first needed.
class ClearRows {
  public:
    /// Appends `count` rows of `row_bytes` zeros as parts.
    void Append(Deflater& deflater, std::size_t row_bytes, std::size_t count, Bytes& out) {
        if (m_row_bytes != row_bytes) m_parts = {};
        m_row_bytes = row_bytes;
        for (std::size_t power = kParts; power-- > 0;) {
            const std::size_t rows = std::size_t{1} << power;
            for (; count >= rows; count -= rows) {
                Bytes& part = m_parts[power];
                if (part.empty()) deflater.Append(Bytes(rows * row_bytes), part);
                out.insert(out.end(), part.begin(), part.end());
            }
        }
    }

  private:
    static constexpr std::size_t kParts = 9;

    std::size_t m_row_bytes = 0;
    /// 1, 2, 4 ... 256 rows; empty until needed.
    std::array<Bytes, kParts> m_parts;
};

/// The checksum of a zlib stream.
class Adler {
  public:
    void Add(std::span<const std::uint8_t> bytes) noexcept {
        m_value = libdeflate_adler32(m_value, bytes.data(), bytes.size());
    }
    /// Adds zeros: the lower sum stays, and the upper one grows by it for each byte.
    void AddZeros(std::uint64_t count) noexcept {
        constexpr std::uint32_t kModulus = 65521;
        const std::uint64_t lower = m_value & 0xFFFF, upper = m_value >> 16;
        m_value = static_cast<std::uint32_t>((upper + lower * (count % kModulus)) % kModulus << 16 | lower);
    }
    std::uint32_t Value() const noexcept { return m_value; }

  private:
    std::uint32_t m_value = 1;
};

/// The filter for rows. Where colours change gradually, as in a photograph, it makes them shorter; rows of characters
/// are shorter without.
PngFilter FilterFor(ConstPixelView pixels, int top, int bottom) noexcept {
    constexpr int kRowStep = 16;
    RowChanges changes;
    int all = 0;
    for (int y = std::max(top, 1); y < bottom; y += kRowStep) {
        changes += ChangesOf(pixels.Row(y), pixels.Row(y - 1));
        all += pixels.Width();
    }
    // A tenth: of characters, 1 to 5 % of the pixels change by little, of photographs 14 % and more.
    if (changes.gradual * 10 <= all) return PngFilter::kNone;
    return changes.from_left < changes.from_above ? PngFilter::kLeft : PngFilter::kAbove;
}

/// What the encodings of one thread after another use again.
class Encoder {
  public:
    std::string Encode(const Picture& picture, PngForm form);

    /// The next one in the pool.
    std::unique_ptr<Encoder> next;

  private:
    void AppendClear(int rows);
    void AppendDrawn(int top, int bottom);

    Deflater m_deflater;
    ClearRows m_clear_rows;
    Bytes m_rows, m_zlib;
    /// The samples of a row that is filtered, and of the one above it.
    Bytes m_row, m_above;
    // Of the current picture.
    ConstPixelView m_pixels{{}, 0, 0};
    PngColourType m_type = PngColourType::kColourAndAlpha;
    std::size_t m_row_bytes = 0;
    Adler m_adler;
};

std::string Encoder::Encode(const Picture& picture, PngForm form) {
    constexpr std::uint8_t kStreamStart[] = {0x78, 0x01};  // deflate with a window of 32 KiB, fastest
    constexpr std::uint8_t kStreamEnd[] = {0x03, 0x00};    // a last block without bytes
    const ConstPixelView pixels = picture.View();
    const PngHeader header = HeaderOf(pixels, form);
    m_pixels = pixels;
    m_type = header.type;
    m_row_bytes = PngRowBytes(pixels.Width(), header.type);
    m_adler = {};
    for (Bytes* samples : {&m_row, &m_above}) samples->assign(m_row_bytes - 1, 0);
    m_zlib.assign(std::begin(kStreamStart), std::end(kStreamStart));
    const auto is_clear = [&](int y) { return !picture.MayBeDrawn(y) || HasZeroSamples(pixels.Row(y), m_type); };
    const int rows_of_a_part = static_cast<int>(std::max<std::size_t>(kPartBytes / m_row_bytes, 1));
    for (int top = 0, bottom = 0; top < pixels.Height(); top = bottom) {
        const bool clear = is_clear(top);
        for (bottom = top + 1; bottom < pixels.Height() && bottom - top < rows_of_a_part; ++bottom) {
            if (is_clear(bottom) != clear) break;
        }
        if (clear) {
            AppendClear(bottom - top);
        } else {
            AppendDrawn(top, bottom);
        }
    }
    m_zlib.insert(m_zlib.end(), std::begin(kStreamEnd), std::end(kStreamEnd));
    for (int shift = 24; shift >= 0; shift -= 8) m_zlib.push_back(static_cast<std::uint8_t>(m_adler.Value() >> shift));
    return PngFile(header, {}, m_zlib);
}

void Encoder::AppendClear(int rows) {
    const auto count = static_cast<std::size_t>(rows);
    m_clear_rows.Append(m_deflater, m_row_bytes, count, m_zlib);
    m_adler.AddZeros(std::uint64_t{count} * m_row_bytes);
}

void Encoder::AppendDrawn(int top, int bottom) {
    m_rows.resize(static_cast<std::size_t>(bottom - top) * m_row_bytes);
    const PngFilter filter = FilterFor(m_pixels, top, bottom);
    std::uint8_t* out = m_rows.data();
    if (filter != PngFilter::kNone && top > 0) CopySamples(m_pixels.Row(top - 1), m_type, m_above.data());
    for (int y = top; y < bottom; ++y, out += m_row_bytes) {
        if (filter == PngFilter::kNone) {
            *out = static_cast<std::uint8_t>(filter);
            CopySamples(m_pixels.Row(y), m_type, out + 1);
        } else {
            CopySamples(m_pixels.Row(y), m_type, m_row.data());
            FilterRow(filter, m_row, m_above, SamplesOf(m_type), out);
            m_row.swap(m_above);
        }
    }
    m_deflater.Append(m_rows, m_zlib);
    m_adler.Add(m_rows);
}

/// Encoders that wait for a picture. Not one for each thread: a thread that ends would need memory to free its own.
class EncoderPool {
  public:
    std::unique_ptr<Encoder> Take() {
        {
            const std::lock_guard lock(m_mutex);
            if (m_first != nullptr) {
                std::unique_ptr<Encoder> encoder = std::move(m_first);
                m_first = std::move(encoder->next);
                return encoder;
            }
        }
        return std::make_unique<Encoder>();
    }

    void Give(std::unique_ptr<Encoder> encoder) {
        const std::lock_guard lock(m_mutex);
        encoder->next = std::move(m_first);
        m_first = std::move(encoder);
    }

  private:
    std::mutex m_mutex;
    std::unique_ptr<Encoder> m_first;
};

}  // namespace

std::string EncodeFastPng(const Picture& picture, PngForm form) {
    static EncoderPool pool;
    std::unique_ptr<Encoder> encoder = pool.Take();
    std::string png = encoder->Encode(picture, form);
    pool.Give(std::move(encoder));
    return png;
}

}  // namespace zel::picture
