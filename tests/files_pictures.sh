#!/bin/sh
# Writes the pictures of the EXIF tests into the folder given: tiny JPEG and
# TIFF files made by ImageMagick, dated by exiftool.
set -eu
dir=$1
mkdir -p "$dir"
cd "$dir"
rm -f ./*.jpg ./*.tif ./*.txt
tag() { exiftool -q -q -overwrite_original "$@"; }

convert -size 8x8 xc:red base.jpg
convert -size 8x8 xc:blue -define tiff:endian=msb be.tif
convert -size 8x8 xc:blue -define tiff:endian=lsb le.tif

cp base.jpg full.jpg && tag -DateTimeOriginal='2015:07:04 18:30:05' full.jpg
cp base.jpg full_le.jpg && tag -ExifByteOrder=II -DateTimeOriginal='2015:07:04 18:30:05' full_le.jpg
# '#' writes the value as it stands; exiftool would refuse a bare year.
cp base.jpg year.jpg && tag '-DateTimeOriginal#=2015' year.jpg
cp base.jpg none.jpg && tag -DateTime='2011:11:11 11:11:11' -Artist=Tester none.jpg
tag -DateTimeOriginal='2001:02:03 04:05:06' be.tif le.tif
# Cut inside the EXIF segment, before the date's value.
head -c 120 full.jpg > truncated.jpg
# Cut inside the date's value.
head -c 200 full.jpg > value_cut.jpg
echo 'This is a text file, not a picture.' > text.jpg
rm base.jpg

# Check what the tests rely on.
head -c 4 be.tif | od -An -c | grep -q 'M   M' || { echo "be.tif is not big-endian" >&2; exit 1; }
head -c 4 le.tif | od -An -c | grep -q 'I   I' || { echo "le.tif is not little-endian" >&2; exit 1; }
echo "pictures written to $dir"
