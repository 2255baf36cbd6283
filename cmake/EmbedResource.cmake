# Writes a source that defines the bytes of INPUT as SYMBOL, and their number as SYMBOL_size, into OUTPUT.
file(READ ${INPUT} bytes HEX)
file(SIZE ${INPUT} size)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
string(REGEX REPLACE "((0x..,){20})" "\\1\n" bytes "${bytes}")
file(WRITE ${OUTPUT} "#include <zelcore/Export.h>

extern \"C\" {
ZEL_DLL_EXPORT extern const unsigned char ${SYMBOL}[] = {
${bytes}0x00};
ZEL_DLL_EXPORT extern const unsigned long ${SYMBOL}_size = ${size};
}
")
