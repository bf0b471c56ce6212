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

/// Address of a tag_font_memory in the exported signatures: an integer as wide as a pointer. 0 for none.
using FontAddress = INT_PTR;

}  // namespace zel

/// The fonts of one message: 16 slots, the palette, and the colours of glyphs without a colour set. The index of a slot
/// identifies its font as long as the message is loaded.
///
/// The object does not own the blocks of its slots: the host does, by the font_copy of each slot. A slot's font_copy
/// shares the slot's blocks. The host calls ReleaseFontData on one of the two, and deletes the font_copy.
///
/// The pixels of a stored glyph are read from the font file, which is opened again for each. If it can't be opened, the
/// user sees one message box, unless warnings are skipped.
class CZelFont {
  public:
    ZELTRANS_API CZelFont();
    /// Releases nothing.
    ZELTRANS_API ~CZelFont();
    CZelFont(const CZelFont&) = delete;
    /// Copies each member, pointers included: the two objects then share their blocks.
    ZELTRANS_API CZelFont& operator=(const CZelFont& other);

    /// Finds the file of a font and loads it into a slot. Asks the user for a missing file.
    /// @param path              directory of the fonts. On return it ends in a backslash or, after the user browsed, is
    ///                          the chosen directory without one.
    /// @param font_number       -1 for none.
    /// @param slot              0 to 15, not checked.
    /// @param make_description  true to fill log_font and effect_params, for a caller without a message.
    /// @return 1: the slot is filled. 0: it is not; it may hold the blocks of a font that was not read to its end, and
    ///         its font_copy is null (see ReleaseUnfinishedSlot). -1: the user cancelled the prompt.
    ZELTRANS_API int ReadFont(CString& path, int font_number, int slot, bool make_description);

    /// Reads the rows of a sample block at the file's position, first then second, into zeroed blocks that it
    /// allocates.
    /// @throws CFileException    cause 1, OS error -1, "Zelmara Font File", for a row that is cut short.
    /// @throws CMemoryException  if memory runs out.
    ZELTRANS_API void write_sample_data(std::FILE* file, tag_graphic_rectangle* first, tag_graphic_rectangle* second,
                                        tag_samp_struct samp);

    /// Draws one character into a bitmap. Without a glyph the bitmap is unchanged.
    /// @param font         address of a tag_font_memory, usually a slot's font_copy; 0 draws nothing.
    /// @param dib          32 bits per pixel, bottom-up, of the size that GetMFRect returned. A pixel is blue, green,
    ///                     red, alpha; the colour is not multiplied by alpha.
    /// @param font_index   not used.
    /// @param char_code    index into the character directory; there is no glyph from 192 up.
    /// @param palette_set  0 to 7: a colour set of m_Palette, for a run-coded glyph. Any other value: the default
    ///                     colours m_FaceColor, m_EdgeColor and m_BackColor.
    /// @throws CFileException    cause 1, OS error -1, the file's name, for a stored glyph that is cut short.
    /// @throws CMemoryException  if memory runs out.
    ZELTRANS_API void BuildMFData(zel::FontAddress font, DIBSECTION* dib, int font_index, DWORD char_code,
                                  int palette_set);

    /// BuildMFData for a run-coded glyph, without a check for a null font or for the kind of the glyph.
    /// @throws CMemoryException  if memory runs out.
    ZELTRANS_API void BuildMFTagData(zel::FontAddress font, DIBSECTION* dib, int font_index, DWORD char_code,
                                     int palette_set);

    /// Size in pixels of the bitmap of one character, for BuildMFData: left and top are 0, right is the width, bottom
    /// the height.
    /// @param font        as for BuildMFData.
    /// @param font_index  not used.
    /// @param char_code   index into the character directory.
    /// @param top         receives glyph_top, in pixels, of a run-coded glyph; unchanged for a stored one.
    /// @param flag        may be null; written for a stored glyph only.
    /// @return an empty rectangle for a null font, a missing glyph, a code from 192 up, run codes that were not loaded,
    ///         or a missing file.
    /// @throws CFileException  cause 1, OS error -1, for a stored glyph that is cut short.
    ZELTRANS_API CRect GetMFRect(zel::FontAddress font, int font_index, DWORD char_code, int& top, bool* flag);

    /// GetMFRect for a run-coded glyph, without a check for a null font or for the kind of the glyph.
    ZELTRANS_API CRect GetTagRect(zel::FontAddress font, int font_index, DWORD char_code, int& top);

    /// True for 0 to 15.
    ZELTRANS_API bool IsValidFontIndex(int index);

    /// Frees the blocks of a slot or of a font_copy, all but its own font_copy, and clears their pointers.
    /// @param slot  may be null; a second call does nothing.
    ZELTRANS_API void ReleaseFontData(tag_font_memory* slot);

    /// Finds the slot of a description. If no slot's description equals `font`, the number in a legacy face name, such
    /// as "Zelmara! (3) Name", selects the slot, and `font` becomes that slot's description if it has one.
    /// @return the slot, the number in the name, or -1.
    ZELTRANS_API int FindZelmaraFont(LOGFONT& font);

    /// Frees the blocks of a read that did not reach its end, and empties the slot. If the slot still has a whole font
    /// from an earlier read, only clears font_header and font_copy: that font's blocks belong to the host.
    static void ReleaseUnfinishedSlot(tag_font_memory* slot);

    tag_font_memory m_Slots[zel::kFontSlots];
    /// Palette block of the message, a tag_palete.
    std::uint32_t m_Palette[sizeof(tag_palete) / 4];
    /// Header of the message; valid as long as the message.
    tag_msg_header* m_MessageBlock;
    /// Not used by the module.
    bool m_bSpareA;
    /// Not used by the module.
    bool m_bSpareB;
    /// Colour of index 1 without a colour set.
    COLORREF m_FaceColor;
    /// Colour of index 2 without a colour set.
    COLORREF m_EdgeColor;
    /// Colour of index 3 without a colour set, and background of run-coded glyphs.
    COLORREF m_BackColor;

    /// The Skip Warnings setting of the process.
    ZELTRANS_API static int m_bIgnoreErrors;
    /// The user has cancelled a prompt for a missing font of this import.
    ZELTRANS_API static bool m_bCancelFontBrowse;
    /// Pixels by which the rows of the last message were moved up.
    ZELTRANS_API static int m_iZelYOffset;
    /// Directory of the font file that the user last browsed for.
    ZELTRANS_API static CString m_SFontBrowseDir;

  private:
    bool FindFontFile(CFile& file, CString& name, CString& path, int font_number);
    int BrowseForFontFile(CFile& file, CString& name, CString& path, int font_number, const CString& wanted);
    int LoadFontFile(CFile& file, const CString& name, const CString& path, int slot_index, bool make_description);
};

/// True when the face name of the description begins with "Zelmara", which marks a legacy font.
ZELTRANS_API bool IsZelmaraFont(LOGFONT& font);
