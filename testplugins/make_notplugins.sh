#!/bin/sh
# Makes files that are named like plug-ins and are none.
#     make_notplugins.sh <a good VST2 plug-in> <folder to make them in>
set -e
good=$1
folder=$2
mkdir -p "$folder/folder.so" "$folder/NoBinary.vst3/Contents/Resources" "$folder/OtherPlatform.vst3/Contents/x86_64-win"
: > "$folder/empty.so"
head -c 100 "$good" > "$folder/cut_off.so"
# The header is whole and promises more than there is.
head -c 6000 "$good" > "$folder/cut_in_the_middle.so"
# Byte 18 of the header is the processor: 183 is AArch64. Byte 4 is the word size: 1 is 32 bits.
cp "$good" "$folder/other_processor.so"
printf '\267\000' | dd of="$folder/other_processor.so" bs=1 seek=18 conv=notrunc 2> /dev/null
cp "$good" "$folder/word_size.so"
printf '\001' | dd of="$folder/word_size.so" bs=1 seek=4 conv=notrunc 2> /dev/null
printf 'MZ\220\000 and so on, as Windows libraries begin' > "$folder/windows.so"
# Last, because the build looks at its time.
echo 'This is a text, whatever it is called.' > "$folder/text.so"
