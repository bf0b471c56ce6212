# zel_write_public_source(<from> <to>): a source file as its installed form has it, with includes of <zeltrans/...>.
function(zel_write_public_source from to)
  file(READ "${from}" text)
  string(REGEX REPLACE "#include \"(module/contract/|module/|)([^\"\n]+)\"" "#include <zeltrans/\\2>" text "${text}")
  # The same paths in comments.
  string(REGEX REPLACE "module/contract/([a-z_/]+\\.h)" "zeltrans/\\1" text "${text}")
  string(REGEX REPLACE "(^|[ (])((platform|base)/[a-z_/]+\\.h)" "\\1zeltrans/\\2" text "${text}")
  file(WRITE "${to}" "${text}")
endfunction()
