meta:
  id: zelmara_font
  title: Zelmara! font file (type 500)
  ks-version: 0.9
  endian: be
  bit-endian: be
  encoding: windows-1252
doc: |
  A bitmap font of 192 characters. The file name is a dot and the font's number, usually in four digits (`.0012`). Bit
  fields are packed from the most significant bit down. A field with the prefix `carried_` is converted or kept, but not
  interpreted; a field with the prefix `unread_` is ignored. The offset in the record, or the byte and its bits, follow.
doc-ref: docs/formats.md

seq:
  - id: psos_header
    type: psos_header
    doc: Its file type is 500.
    valid:
      expr: psos_header.file_type == file_type::font
  - id: font_header
    type: font_header
    doc: Names, metrics, and the sizes of the following sections.
  - id: character_directory
    type: char_entry
    repeat: expr
    repeat-expr: 192
    doc: One entry for each character; the character code is the index.
  - id: encoding_data
    type: encoding_block
    size: font_header.encoding_size
    if: font_header.is_sample_first or font_header.is_plain
    doc: |
      Run codes of the run-coded glyphs. A font that is neither plain nor sample-first has none: the next section follows
      the directory directly.
  - id: first_sample_block
    type: sample_block
    if: font_header.is_sample_first and font_header.encoding_size != 0 and font_header.sample_present != 0
    doc: A sample block in its early place. It is replaced by the one in the usual place.
  - id: aux_block
    size: font_header.aux_block_size
    if: font_header.aux_block_size != 0
    doc: Auxiliary block, kept unchanged. A negative size is rejected.
  - id: word_table
    type: word_table
    size: font_header.word_table_bytes
    if: font_header.word_table_bytes != 0
    doc: A table of words. A negative size is rejected.
  - id: char_table_a
    size: 384
    if: font_header.has_char_tables
    doc: First character table, two bytes for each character, kept unchanged.
  - id: char_table_b
    size: 384
    if: font_header.has_char_tables
    doc: Second character table, likewise.
  - id: sample_block
    type: sample_block
    if: font_header.sample_present != 0
    doc: The sample block in its usual place.
  - id: stored_glyphs
    type: stored_place(_index)
    repeat: expr
    repeat-expr: 192
    doc: |
      By character code. Only a directory entry of kind 170 has a record, so the records are in the directory's order,
      without gaps. Bytes after the last record are ignored.

instances:
  run_coded_glyphs:
    type: run_coded_glyph(_index)
    pos: 0
    repeat: expr
    repeat-expr: 192
    doc: By character code, the run codes of the run-coded characters.

types:
  psos_header:
    doc: The header of message, font and RGBA files, 136 bytes.
    seq:
      - id: file_type
        type: u4
        enum: file_type
        doc: Contents of the file.
      - id: carried_4
        type: u4
        doc: Converted, not read.
      - id: type_name
        type: strz
        size: 128
        doc: Text, NUL-terminated or as long as the field; used in error messages only.

  font_header:
    doc: 128 bytes at file offset 136. Heights, offsets and widths are pixels, sizes bytes.
    seq:
      - id: font_name
        type: strz
        size: 70
        doc: 'The prefix "TT " means an installed typeface; may contain " Bold" and " Italic".'
      - id: font_id_text
        type: str
        size: 4
        doc: The font's id in digits; above 5000 a Bitstream number plus 5000.
      - id: unread_74
        type: u4
        doc: Not read.
      - id: font_height
        type: s2
        doc: Height of the font, including the edge.
      - id: row_top_offset
        type: s2
        doc: Plus row_inset, the row_top of a row that is set in this font.
      - id: carried_82
        type: u2
        doc: Converted, not read.
      - id: edge_type
        type: b4
        enum: edge_type
        doc: Kind of the edge; swapped with edge_direction in memory.
      - id: edge_direction
        type: b4
        doc: 0 to 7 are 135, 180, 225, 270, 315, 0, 45 and 90 degrees.
      - id: edge_size
        type: u1
        doc: Size of the edge in pixels.
      - id: carried_86_bits15to9
        type: b7
        doc: Bits 0 to 6 of the word in memory.
      - id: carried_86_bits8to0
        type: b9
        doc: Bits 7 to 15 of the word in memory.
      - id: unread_88
        size: 6
        doc: Not read.
      - id: carried_94
        type: u4
        doc: Converted, not read.
      - id: encoding_size
        type: u4
        doc: Size of the encoding data.
      - id: aux_block_size
        type: s2
        doc: Size of the auxiliary block.
      - id: font_flags
        type: u2
        doc: The value 18, or bits; see is_sample_first, is_plain and has_char_tables.
      - id: carried_106
        type: u2
        repeat: expr
        repeat-expr: 6
        doc: Converted, not read.
      - id: row_inset
        type: s2
        doc: Added to both limits of a row that is set in this font.
      - id: word_table_size
        type: u4
        doc: Size of the word table. A font uses the low 16 bits only; skipping a flash font uses all 32.
      - id: sample_present
        type: u2
        doc: Not 0 if the file has a sample block.
      - id: unread_126
        type: u2
        doc: Not read.
    instances:
      is_sample_first:
        value: font_flags == 18
        doc: Encoding data and a sample block directly follow the directory.
      is_plain:
        value: (font_flags & 0x20) != 0
        doc: Encoding data without a sample block before the other sections. A font without this bit is reported.
      has_char_tables:
        value: (font_flags & 0x04) != 0
        doc: The two character tables are present.
      leaves_empty_rows:
        value: (font_flags & 0x50) != 0
        doc: Bit 0x10 or 0x40; an empty row does not take its limits from such a font.
      word_table_bytes:
        value: '(word_table_size & 0x7fff) - (word_table_size & 0x8000)'
        doc: The low 16 bits of word_table_size, signed.

  char_entry:
    doc: Directory entry of one character, 10 bytes.
    seq:
      - id: glyph_kind
        type: u1
        doc: 170 a stored bitmap glyph; otherwise with bit 0x02 or 0x40 a run-coded glyph; otherwise no glyph.
      - id: unread_1
        type: u1
        doc: Not read.
      - id: glyph_bits_a
        type: b6
        doc: Carried.
      - id: glyph_bits_b
        type: b6
        doc: Carried.
      - id: glyph_top
        type: b10
        doc: Pixels that are subtracted from the character's vertical position.
      - id: glyph_metric
        type: b10
        doc: A metric for the host.
      - id: glyph_offset
        type: u4
        doc: |
          Run-coded glyph - byte offset of its first code in the encoding data. Stored glyph - set on loading to the file
          position of its record.
    instances:
      is_stored:
        value: glyph_kind == 170
        doc: A stored bitmap glyph; tested first, since 170 has bit 0x02 set.
      is_run_coded:
        value: glyph_kind != 170 and (glyph_kind & 0x42) != 0
        doc: A run-coded glyph.

  encoding_block:
    doc: Run codes, located by the directory; run_coded_glyphs reads them.

  run_coded_glyph:
    doc: The run codes of one character.
    params:
      - id: char_code
        type: s4
        doc: Index in the directory.
    instances:
      codes:
        io: _root.encoding_data._io
        pos: _root.character_directory[char_code].glyph_offset
        type: run_code
        repeat: until
        repeat-until: _.is_end_of_glyph
        if: >-
          _root.character_directory[char_code].is_run_coded and
          (_root.font_header.is_sample_first or _root.font_header.is_plain)
        doc: |
          The last code is the word 0. A reader stops at the latest after 500 lines, after 500 runs in one line, or at the
          end of the encoding data.

  run_code:
    doc: 32 bits. The word 0 ends the glyph; the operation determines the meaning of any other word.
    seq:
      - id: stay
        type: b1
        doc: Draw one pixel and do not move (operations colour and blended).
      - id: unread_bits30to24
        type: b7
        doc: Not read.
      - id: colour_index
        type: b8
        doc: Entry of the character's colour set; with the default colours, 1 the face, 2 the edge, 3 the background.
      - id: level
        type: b8
        doc: Alpha of the run.
      - id: count_field
        type: b5
        doc: 32 minus the number of pixels.
      - id: unread_bit2
        type: b1
        doc: Not read.
      - id: operation
        type: b2
        enum: run_operation
        doc: Effect of the run.
    instances:
      count:
        value: 32 - count_field
        doc: Pixels of the run, 1 to 32.
      is_end_of_glyph:
        value: >-
          not stay and unread_bits30to24 == 0 and colour_index == 0 and level == 0 and count_field == 0 and
          not unread_bit2 and operation == run_operation::background
        doc: The word is 0.

  word_table:
    doc: 16-bit words; the last byte of an odd size is unchanged.
    seq:
      - id: words
        type: u2
        repeat: expr
        repeat-expr: _io.size / 2
        doc: Converted, not read.

  sample_block:
    doc: Two samples after a head of 10 bytes; kept for the host.
    seq:
      - id: head
        type: sample_head
        doc: Sizes of both.
      - id: rows_a
        size: head.width_a
        repeat: expr
        repeat-expr: head.height_a
        doc: Rows of the first sample, none for a height of 0 or below. A row of 0 bytes is rejected.
      - id: rows_b
        size: head.width_b
        repeat: expr
        repeat-expr: head.height_b
        doc: Rows of the second sample, likewise.

  sample_head:
    doc: Head of a sample block, 10 bytes.
    seq:
      - id: samp_first_word
        type: s2
        doc: Carried.
      - id: width_a
        type: s2
        doc: Bytes in a row of the first sample.
      - id: height_a
        type: s2
        doc: Rows of the first sample.
      - id: width_b
        type: s2
        doc: Bytes in a row of the second sample.
      - id: height_b
        type: s2
        doc: Rows of the second sample.

  stored_place:
    doc: The record of one character, or nothing.
    params:
      - id: char_code
        type: s4
        doc: Index in the directory.
    seq:
      - id: record
        type: stored_glyph
        if: _root.character_directory[char_code].is_stored
        doc: Present for a directory entry of kind 170.

  stored_glyph:
    doc: A stored bitmap glyph; an RGBA file (type 714 or 717) has one after its Psos file header.
    seq:
      - id: head
        type: stored_glyph_head
        doc: Length and size.
      - id: pixels
        type: stored_pixels(head.width_plus_1 - 1, head.height)
        size: head.length - 12
        doc: The rest of the record.

  stored_glyph_head:
    doc: Head of a stored glyph record, 12 bytes.
    seq:
      - id: length
        type: u4
        doc: Bytes of the record, including these 4.
      - id: flag
        type: b1
        doc: A flag for the host.
      - id: unread_4_bits14to0
        type: b15
        doc: Not read.
      - id: carried_6
        type: u2
        doc: Not interpreted.
      - id: width_plus_1
        type: s2
        doc: Width in pixels plus 1.
      - id: height
        type: s2
        doc: Height in pixels.

  stored_pixels:
    doc: width x height pixels, top row first, rows without gaps.
    params:
      - id: width
        type: s4
        doc: Pixels in a row.
      - id: height
        type: s4
        doc: Rows.
    seq:
      - id: pixels
        type: stored_pixel
        repeat: expr
        repeat-expr: width * height
        doc: The pixels.

  stored_pixel:
    doc: 4 bytes. A colour byte above its alpha is limited to it; a pixel of alpha 0 is empty.
    seq:
      - id: alpha
        type: u1
        doc: 0 transparent, 255 opaque.
      - id: blue
        type: u1
        doc: Premultiplied by alpha.
      - id: green
        type: u1
        doc: Premultiplied by alpha.
      - id: red
        type: u1
        doc: Premultiplied by alpha.

enums:
  file_type:
    500: font
    702: message
    714: rgba_a
    717: rgba_b
  edge_type:
    0: none
    1: border
    2: drop_shadow
    3: offset
  run_operation:
    0:
      id: background
      doc: Pixels of the background colour, alpha 0.
    1:
      id: colour
      doc: Pixels of a colour.
    2:
      id: blended
      doc: Pixels of a colour, blended once with the existing first pixel.
    3:
      id: end_of_line
      doc: The rest of the line is empty; the next code begins a new one.
