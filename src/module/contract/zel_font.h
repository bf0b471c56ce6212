#pragma once

#include <cstdint>
#include <cstdio>

#include "module/contract/records/font_memory.h"
#include "module/contract/records/msg_header.h"
#include "module/contract/records/palette.h"
#include "module/contract/records/zeltrans_api.h"
#include "platform/framework/cstring.h"
#include "platform/framework/geometry.h"
#include "platform/system/types.h"

class CFile;

namespace zel {

/// Address of a tag_font_memory as the exported signatures carry it: an integer as wide as a pointer. 0 means none.
using FontAddress = INT_PTR;

}  // namespace zel

/// The fonts of one message: 16 slots, the message's palette and the colours for glyphs drawn without a set. A slot
/// index is a font's identity in all that follows a load. The object owns no slot data: blocks outlive it, for the
/// font_copy records in the host's hands.
class CZelFont {
  public:
    ZELTRANS_API CZelFont();
    /// Releases nothing; see ReleaseFontData.
    ZELTRANS_API ~CZelFont();
    CZelFont(const CZelFont&) = delete;
    /// Copies member by member, pointers included: the two objects share their blocks afterwards.
    ZELTRANS_API CZelFont& operator=(const CZelFont& other);

    /// Finds the file of a font number and loads it into a slot.
    /// @param path              directory of the fonts. Comes back ending in a backslash or, after the user browsed, as
    /// the
    ///                          chosen directory without one.
    /// @param font_number       -1 means none.
    /// @param slot              0 to 15; the caller keeps to this range.
    /// @param make_description  fill log_font and effect_params too, for a caller without a message.
    /// @return 1 filled, 0 not filled, -1 the user cancelled the prompt for a missing file. After 0 the slot may hold
    /// blocks
    ///         of a font that was not read to its end, then its font_copy is null; see ReleaseUnfinishedSlot.
    ZELTRANS_API int ReadFont(CString& path, int font_number, int slot, bool make_description);

    /// Reads the rows of a sample block from the file's position, first then second, into zeroed memory of their own.
    /// @throws CFileException    cause 1, OS error -1, "Zelmara Font File", for a row that doesn't come whole.
    /// @throws CMemoryException
    ZELTRANS_API void write_sample_data(std::FILE* file, tag_graphic_rectangle* first, tag_graphic_rectangle* second,
                                        tag_samp_struct samp);

    /// Fills a bitmap with the pixels of one character.
    /// @param font         address of a tag_font_memory, as a rule a slot's font_copy.
    /// @param dib          32 bits a pixel, bottom-up, of the size that GetMFRect gave. A pixel is blue, green, red,
    /// alpha, the
    ///                     colour not multiplied by alpha.
    /// @param font_index   not used.
    /// @param char_code    index into the directory. From 192 up, and without a glyph, the bitmap is left as it was.
    /// @param palette_set  0 to 7: a colour set of m_Palette for a run-coded glyph; any other value: the default
    /// colours. A stored bitmap glyph is read from the font file, which is opened again; a file that can't be opened
    /// gives one box unless warnings are skipped.
    /// @throws CFileException    cause 1, OS error -1, the file's name, for a record cut short.
    /// @throws CMemoryException
    ZELTRANS_API void BuildMFData(zel::FontAddress font, DIBSECTION* dib, int font_index, DWORD char_code,
                                  int palette_set);

    /// BuildMFData for run-coded glyphs; looks at neither a null font nor glyph_kind.
    /// @throws CMemoryException
    ZELTRANS_API void BuildMFTagData(zel::FontAddress font, DIBSECTION* dib, int font_index, DWORD char_code,
                                     int palette_set);

    /// Size in pixels of one character's bitmap, which BuildMFData fills: left and top 0, right the width, bottom the
    /// height. A stored bitmap glyph is measured in the font file, which is opened again; a run-coded one in memory.
    /// @param char_code  index into the directory.
    /// @param top        receives glyph_top, in lines, of a run-coded glyph; not written for a stored one.
    /// @param flag       may be null; written for a stored glyph only.
    /// @return the empty rectangle for a null font, no glyph, a code of 192 and above, run codes that were not loaded,
    /// or a
    ///         missing file (then one box, unless warnings are skipped).
    /// @throws CFileException, cause 1, OS error -1, when the glyph's record is cut short.
    ZELTRANS_API CRect GetMFRect(zel::FontAddress font, int font_index, DWORD char_code, int& top, bool* flag);

    /// GetMFRect for run-coded glyphs; looks at neither a null font nor glyph_kind.
    ZELTRANS_API CRect GetTagRect(zel::FontAddress font, int font_index, DWORD char_code, int& top);

    /// True for 0 to 15.
    ZELTRANS_API bool IsValidFontIndex(int index);

    /// Frees what the slot's pointers hold, all but font_copy, and clears them. Null and a second call are fine.
    ZELTRANS_API void ReleaseFontData(tag_font_memory* slot);

    /// Slot whose description equals `font`; without one, the slot that a legacy face name such as "Zelmara! (3) Name"
    /// tells, and then `font` becomes that slot's description if it has one.
    /// @return the slot, or the number that the name tells, or -1.
    ZELTRANS_API int FindZelmaraFont(LOGFONT& font);

    /// Frees the blocks of a read that ended half-way and empties the slot. A slot that holds a whole font from an
    /// earlier read only loses its pointers font_header and font_copy: its blocks belong to whoever was given the font.
    static void ReleaseUnfinishedSlot(tag_font_memory* slot);

    tag_font_memory m_Slots[zel::kFontSlots];
    std::uint32_t m_Palette[sizeof(tag_palete) / 4];  ///< the message's palette block.
    tag_msg_header* m_MessageBlock;                   ///< the message's, for the host; dies with the message.
    bool m_bSpareA;
    bool m_bSpareB;
    COLORREF m_FaceColor;  ///< colour index 1 without a set.
    COLORREF m_EdgeColor;  ///< colour index 2 without a set.
    COLORREF m_BackColor;  ///< colour index 3 without a set, and the background of run-coded glyphs.

    ZELTRANS_API static int m_bIgnoreErrors;       ///< the Skip Warnings setting of the process.
    ZELTRANS_API static bool m_bCancelFontBrowse;  ///< the user has cancelled a font prompt of this import.
    ZELTRANS_API static int m_iZelYOffset;         ///< lines that the rows of the last message were moved up by.
    ZELTRANS_API static CString m_SFontBrowseDir;  ///< directory of the font file last browsed for.

  private:
    bool FindFontFile(CFile& file, CString& name, CString& path, int font_number);
    int BrowseForFontFile(CFile& file, CString& name, CString& path, int font_number, const CString& wanted);
    int LoadFontFile(CFile& file, const CString& name, const CString& path, int slot_index, bool make_description);
};

/// True when the description's face name marks a legacy font: it begins with "Zelmara".
ZELTRANS_API bool IsZelmaraFont(LOGFONT& font);
