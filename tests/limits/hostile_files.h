#pragma once

#include "limits/hostile_disk.h"

/// Disks whose files, mostly of a few KB, request far more work or memory than any message needs. Each function writes
/// one disk.
namespace zel::limits {

/// Characters with glyphs of up to 15,968 x 501 pixels, from one line of 499 runs and empty lines.
void WideGlyphs(const HostileDisk& disk);
/// The same, half as wide, in 16 fonts that differ and in all colour sets.
void WideGlyphsOfManyFonts(const HostileDisk& disk);
/// Glyphs as large as the picture, over one another in every row.
void GlyphsOverOneAnother(const HostileDisk& disk);
/// Characters of typefaces of 2000 lines, each with a shadow of 255.
void TallTypefacesWithShadow(const HostileDisk& disk);
/// The same with a border.
void TallTypefacesWithBorder(const HostileDisk& disk);
/// 65,536 rows announced, none in the file.
void AnnouncedRows(const HostileDisk& disk);
/// 65,536 empty rows in the file.
void EmptyRows(const HostileDisk& disk);
/// As many tab fields as are read, each over the whole width.
void ManyTabFields(const HostileDisk& disk);
/// 16 fonts with encoding data of 256 MiB, all a hole.
void SparseFonts(const HostileDisk& disk);
/// 16 fonts with as much encoding data as is read, all a hole.
void SparseFontsWithinTheLimit(const HostileDisk& disk);
/// A message and 16 fonts in files of 80 MiB, all a hole.
void LargeSparseFiles(const HostileDisk& disk);
/// A stored glyph of 8192 x 8192 pixels, all a hole.
void LargeStoredGlyph(const HostileDisk& disk);
/// Stored glyphs that announce 1024 x 1023 pixels and contain none.
void ManyStoredGlyphs(const HostileDisk& disk);
/// 16 MiB of codes that never advance, which all characters share.
void StayCodes(const HostileDisk& disk);
/// 1 MiB of such codes, which blend, in each of four fonts and in all colour sets.
void StayCodesOfManyFonts(const HostileDisk& disk);
/// An RGBA picture of 4096 x 4096 pixels, all a hole.
void LargeRgbaPicture(const HostileDisk& disk);
/// Name lists of 8 MiB of the shortest lines.
void LongNameLists(const HostileDisk& disk);
/// Name lists of 256 MiB, all a hole after the first lines.
void SparseNameLists(const HostileDisk& disk);
/// A document with 240,000 empty objects as rows.
void DocumentOfEmptyObjects(const HostileDisk& disk);
/// A document with as many empty objects as are read.
void DocumentOfManyValues(const HostileDisk& disk);
/// A document of 8 MiB, all opening brackets.
void DocumentOfBrackets(const HostileDisk& disk);
/// A document with one object of a million members.
void DocumentOfMembers(const HostileDisk& disk);
/// A picture of 4096 x 4096 pixels in few bytes.
void LargeRecordedPicture(const HostileDisk& disk);

}  // namespace zel::limits
