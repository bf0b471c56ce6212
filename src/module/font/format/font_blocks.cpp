#include "module/font/format/font_blocks.h"

#include <cstdlib>

#include "module/contract/records/effpar.h"

namespace zel::font {

namespace {

template <typename T>
void Delete(T*& block) {
    delete block;
    block = nullptr;
}

template <typename T>
void Free(T*& block) {
    std::free(block);
    block = nullptr;
}

}  // namespace

void ReleaseFontBlocks(tag_font_memory& font) noexcept {
    Delete(font.font_header);
    Free(font.char_directory);
    Delete(font.spare_block_a);
    Free(font.encoding_data);
    Free(font.aux_block);
    Free(font.word_table);
    Free(font.char_table_a);
    Free(font.char_table_b);
    Delete(font.spare_block_b);
    Delete(font.psos_header);
    Free(font.sample_a.data);
    Free(font.sample_b.data);
    Delete(font.log_font);
    Delete(font.effect_params);
}

}  // namespace zel::font
