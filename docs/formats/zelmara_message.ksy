meta:
  id: zelmara_message
  title: Zelmara! message file (type 702)
  ks-version: 0.9
  endian: be
  bit-endian: be
  encoding: windows-1252
  imports:
    - zelmara_font
doc: |
  A column of rows of positioned, coloured characters. Bit fields are packed from the most significant bit down. A field
  with the prefix `carried_` is converted or kept, but not interpreted; a field with the prefix `unread_` is ignored. The
  offset in the record, or the byte and its bits, follow. Positions are pixels of the whole picture, including blanked lines.
doc-ref: docs/formats.md

seq:
  - id: psos_header
    type: zelmara_font::psos_header
    doc: Its file type is 702.
    valid:
      expr: psos_header.file_type == zelmara_font::file_type::message
  - id: msg_flags
    type: msg_flags
    doc: Which sections follow, and the video standard.
  - id: flash_font
    type: flash_font
    if: msg_flags.has_flash_font
    doc: A font within the message; skipped.
  - id: msg_header
    type: msg_header
    doc: Number of rows, frame and fonts.
  - id: rows
    type: row
    repeat: expr
    repeat-expr: msg_header.last_row + 1
    doc: The text.
  - id: palette
    type: palette
    if: msg_flags.has_palette
    doc: Colours; without it the default palette is used.
  - id: background
    type: background
    if: msg_flags.has_background
    doc: Skipped.
  - id: tab_table
    type: tab_table
    if: msg_flags.has_tab_table
    doc: Named parts of rows. Bytes after the last section are ignored.

types:
  msg_flags:
    doc: Eight words of 16 bits, 16 bytes at file offset 136. The first word is section_flags.
    seq:
      - id: is_pal
        type: b1
        doc: section_flags 0x8000. PAL, 576 active lines, line offset 33; clear NTSC, 486 active lines, line offset 20.
      - id: unread_bits14to9
        type: b6
        doc: Ignored.
      - id: has_flash_font
        type: b1
        doc: section_flags 0x0100.
      - id: unread_bits7to6
        type: b2
        doc: Ignored.
      - id: has_tab_table
        type: b1
        doc: section_flags 0x0020.
      - id: unread_bits4to2
        type: b3
        doc: Ignored.
      - id: has_background
        type: b1
        doc: section_flags 0x0002.
      - id: has_palette
        type: b1
        doc: section_flags 0x0001.
      - id: carried_2
        type: u2
        repeat: expr
        repeat-expr: 7
        doc: Converted, not read.

  flash_font:
    doc: 2056 bytes and the font's data.
    seq:
      - id: unread_0
        type: u4
        doc: Not used.
      - id: unread_4
        type: u4
        doc: Not used.
      - id: font_header
        type: zelmara_font::font_header
        doc: Only encoding_size and word_table_size are used, the latter with all its 32 bits.
      - id: character_directory
        type: zelmara_font::char_entry
        repeat: expr
        repeat-expr: 192
        doc: Skipped.
      - id: data
        size: font_header.encoding_size + font_header.word_table_size
        doc: Skipped.

  msg_header:
    doc: Message values, 26 words of 16 bits.
    seq:
      - id: carried_0
        type: u2
        doc: Converted, not read.
      - id: carried_2
        type: u2
        doc: Converted, not read.
      - id: last_row
        type: u2
        doc: Index of the last row; the message has one more row than that.
      - id: frame_left
        type: u2
        doc: Pixels; x position of a row without characters.
      - id: frame_top
        type: u2
        doc: Pixels; in memory minus the line offset, modulo 65536.
      - id: frame_right
        type: u2
        doc: Pixels; carried.
      - id: frame_bottom
        type: u2
        doc: Pixels; in memory minus the line offset, modulo 65536; carried.
      - id: carried_14
        type: u2
        repeat: expr
        repeat-expr: 3
        doc: Converted, not read.
      - id: font_numbers
        type: u2
        repeat: expr
        repeat-expr: 16
        doc: The font number of each slot, 65535 for a slot without a font.

  row:
    doc: A head, and the characters of the row.
    seq:
      - id: head
        type: row_head
        doc: Position and limits of the row, and the start of its chain.
      - id: characters
        type: character
        repeat: expr
        repeat-expr: head.char_count
        if: not head.row_empty
        doc: At most 63. The chain gives the reading order, not the order of the records.

  row_head:
    doc: 8 bytes, b0 to b7.
    seq:
      - id: carried_b0_bit7
        type: b1
        doc: word0 bit 0 in memory.
      - id: carried_b0_bit6
        type: b1
        doc: word0 bit 1 in memory.
      - id: row_empty
        type: b1
        doc: No character records follow, whatever char_count is.
      - id: carried_b0_bit4
        type: b1
        doc: word0 bit 3 in memory.
      - id: carried_b0_bit3
        type: b1
        doc: word0 bit 4 in memory.
      - id: carried_b0_bit2
        type: b1
        doc: word0 bit 5 in memory.
      - id: row_y
        type: b10
        doc: Vertical position of the row, pixels.
      - id: first_char
        type: b6
        doc: Index of the first record of the chain, 0 to 62.
      - id: row_top
        type: b10
        doc: Upper limit of the row, pixels below row_y.
      - id: char_count
        type: b6
        doc: Number of character records, and steps of a walk along the chain.
      - id: row_bottom
        type: b10
        doc: Lower limit of the row, pixels below row_y.
      - id: unread_b6_bits7to5
        type: b3
        doc: Dropped.
      - id: carried_b6_bits4to3
        type: b2
        doc: word3 bits 4 and 3 in memory.
      - id: carried_b6_bit2
        type: b1
        doc: word3 bits 2 and 5 in memory.
      - id: carried_b6_bits1to0_b7
        type: b10
        doc: word3 bits 15 to 6 in memory; the upper two in bits 1 and 0 as well.

  character:
    doc: 8 bytes, b0 to b7.
    seq:
      - id: carried_b0_bit7
        type: b1
        doc: word0 bit 0 in memory.
      - id: place_flag
        type: b1
        doc: A flag for the host.
      - id: chain_end
        type: b1
        doc: Set on the last character of the chain; not read.
      - id: carried_b0_bit4
        type: b1
        doc: word0 bit 3 in memory.
      - id: carried_b0_bit3
        type: b1
        doc: word0 bit 4 in memory.
      - id: carried_b0_bit2
        type: b1
        doc: word0 bit 5 in memory.
      - id: char_x
        type: b10
        doc: Horizontal position, pixels.
      - id: carried_b2_bits7to6
        type: b2
        doc: word1 bits 1 and 0 in memory.
      - id: carried_b2_bit5
        type: b1
        doc: word1 bit 2 in memory.
      - id: colour_set
        type: b3
        doc: Colour set of the character, one of eight.
      - id: char_y
        type: b10
        doc: Vertical position in the row, pixels.
      - id: char_font
        type: b6
        doc: Font slot, valid below 16.
      - id: char_code
        type: b10
        doc: The low 8 bits are the index in the font's character directory.
      - id: carried_b6_b7_bits7to6
        type: b10
        doc: word3 bits 9 to 0 in memory.
      - id: next_char
        type: b6
        doc: Index of the chain's next record; 63 ends the chain.

  palette:
    doc: Eight colour sets of 32 entries, set 0 entry 0 first. In a set entry 1 is the face colour, entry 2 the edge colour.
    seq:
      - id: palette_lead
        type: u2
        doc: Carried unconverted.
      - id: palette_words
        type: u2
        valid:
          min: 1
        doc: Number of 16-bit words that follow, 512 for all entries. At most 512 are read; 0 is rejected.
      - id: entries
        type: palette_entry
        repeat: expr
        repeat-expr: words_read / 2
        doc: Entry e of set s is number 32 x s + e. Entries beyond the section are 0.
      - id: half_entry
        type: u2
        if: words_read % 2 != 0
        doc: Green and blue of one more entry, if the number of words is odd.
    instances:
      words_read:
        value: 'palette_words < 512 ? palette_words : 512'
        doc: Words that are read.

  palette_entry:
    doc: A colour, 4 bytes.
    seq:
      - id: green
        type: u1
        doc: Top byte of the entry.
      - id: blue
        type: u1
        doc: Second byte.
      - id: unread_2
        type: u1
        doc: Not read; usually 255.
      - id: red
        type: u1
        doc: Lowest byte of the entry.

  background:
    doc: A tag, and words whose number it determines.
    seq:
      - id: tag
        type: u2
        valid:
          any-of: [0xbbbb, 0xbbbc, 0xbbbd]
        doc: Determines the length; any other tag is rejected.
      - id: words
        type: u2
        repeat: expr
        repeat-expr: 'tag == 0xbbbb ? 1536 : tag == 0xbbbc ? 1154 : 974'
        doc: Skipped.

  tab_table:
    doc: A head of 6 bytes and the records.
    seq:
      - id: tab_version
        type: u2
        valid: 2
        doc: Other versions are rejected.
      - id: tab_words
        type: u2
        valid:
          max: 2612
        doc: Size of the records in 16-bit words; more than 200 records are rejected.
      - id: unread_4
        type: u2
        doc: Not read.
      - id: records
        type: tab_record
        repeat: expr
        repeat-expr: tab_words * 2 / 26
        doc: At most 200.

  tab_record:
    doc: A tab field, 26 bytes. Rejected unless tab_start is below tab_end and tab_row is a row of the message.
    seq:
      - id: tab_start
        type: u2
        doc: Left end, pixels, in the units of char_x; 7 higher in memory.
      - id: tab_end
        type: u2
        doc: Right end, likewise.
      - id: tab_byte
        type: u1
        doc: Carried.
      - id: tab_name
        type: strz
        size: 17
        doc: '"un-named" means no name. May lack a NUL.'
      - id: tab_row
        type: b6
        doc: Row of the field, 0 to 63; tab_bits 5 to 0 in memory.
      - id: tab_a
        type: b4
        doc: Carried; tab_bits 9 to 6 in memory.
      - id: tab_font
        type: b5
        doc: Font slot, 16 and above mean none; tab_bits 14 to 10 in memory.
      - id: tab_colour
        type: b4
        doc: The low 3 bits are a colour set; tab_bits 18 to 15 in memory.
      - id: carried_b24_bit4
        type: b1
        doc: tab_bits 19 in memory.
      - id: carried_b24_bit3
        type: b1
        doc: tab_bits 20 in memory.
      - id: carried_b24_bit2
        type: b1
        doc: tab_bits 21 in memory.
      - id: carried_b24_bit1
        type: b1
        doc: tab_bits 22 in memory.
      - id: carried_b24_bit0
        type: b1
        doc: tab_bits 23 in memory.
      - id: unread_25
        type: u1
        doc: Not read.
