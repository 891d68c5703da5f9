# Writes the bytes of WORLD into RESULT, a C++ source.
file(READ "${WORLD}" bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
string(REPEAT "." 80 line)
string(REGEX REPLACE "(${line})" "\\1\n" bytes "${bytes}")
file(WRITE "${RESULT}" "namespace playground {
extern const unsigned char world_bytes[];
extern const unsigned int world_size;
const unsigned char world_bytes[] = {
${bytes}};
const unsigned int world_size = sizeof world_bytes;
}  // namespace playground
")
