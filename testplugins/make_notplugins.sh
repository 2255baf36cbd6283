#!/bin/sh
# Makes files that are named like plug-ins and are none.
#     make_notplugins.sh <a good VST2 plug-in> <folder to make them in> <how plug-ins' names end>
set -e
good=$1
folder=$2
ending=$3

# patched <name> <byte>... : the good one with other bytes from $place on.
patched() {
    name=$1
    shift
    cp "$good" "$folder/$name$ending"
    printf "$1" | dd of="$folder/$name$ending" bs=1 seek=$((place)) conv=notrunc 2> /dev/null
}

# What an earlier one made and this one does not is gone.
rm -rf "$folder"
mkdir -p "$folder/folder$ending" "$folder/NoBinary.vst3/Contents/Resources" "$folder/OtherPlatform.vst3/Contents/MacOS"
: > "$folder/empty$ending"
head -c 100 "$good" > "$folder/cut_off$ending"
# The header is whole and promises more than there is.
head -c 6000 "$good" > "$folder/cut_in_the_middle$ending"
if [ "$(head -c 2 "$good")" = MZ ]; then
    # The number of the processor, behind the four bytes that the headers begin with: AArch64, and 32-bit Intel.
    place=$(($(od -An -tu4 -j60 -N4 "$good") + 4))
    patched other_processor '\144\252'
    patched word_size '\114\001'
    printf '\177ELF and so on, as Linux libraries begin' > "$folder/foreign$ending"
else
    # Byte 18 of the header is the processor: 183 is AArch64. Byte 4 is the word size: 1 is 32 bits.
    place=18
    patched other_processor '\267\000'
    place=4
    patched word_size '\001'
    printf 'MZ\220\000 and so on, as Windows libraries begin' > "$folder/foreign$ending"
fi
# Last, because the build looks at its time.
echo 'This is a text, whatever it is called.' > "$folder/text$ending"
