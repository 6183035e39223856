#!/usr/bin/env bash
# Frames, pictures and names of pxlcc convert and run. Usage: convert_test.sh PROGRAM (or: EMULATOR ARGUMENTS PROGRAM)
. "$(dirname "$0")/support.sh"

# Noise of 20 x 12 pixels, another one in each frame.
noise() { LC_ALL=C awk -v n="$1" -v seed="$2" 'BEGIN { srand(seed); while (n--) printf "%c", 1 + int(255 * rand()) }'; }
for i in 1 2 3; do { printf 'P6\n20 12\n255\n'; noise 720 $i; } >in_$i.ppm; done
tail -c 720 in_1.ppm >in.rgb24
{ printf 'P5\n20 12\n255\n'; noise 240 9; } >gray.pgm

# Jobs: order and bytes are the same, whatever their number; frames before a fault are written, none after it.
works convert in_1.ppm one.i420
{ for i in $(seq 40); do noise 360 $i; done; } >clip.i420
works convert clip.i420 one.bgr24 --size 20x12 --jobs 1
for jobs in 2 3 8; do
    works convert clip.i420 several.bgr24 --size 20x12 --jobs $jobs
    same one.bgr24 several.bgr24
    head -c 10000 clip.i420 >short.i420
    pxlcc convert short.i420 several.bgr24 --size 20x12 --jobs $jobs 2>stderr && wrong "a truncated stream is accepted"
    grep -q '(27 frames before it converted)' stderr || wrong "--jobs $jobs: $(cat stderr)"
    head -c $((27 * 720)) one.bgr24 | cmp - several.bgr24 || wrong "--jobs $jobs before a fault"
done
works convert clip.i420 piped.y4m --size 20x12 --frames 7 --jobs 3
[ "$(grep -c FRAME piped.y4m)" = 7 ] || wrong "--frames with jobs"
fails '--jobs' convert clip.i420 out.bgr24 --size 20x12 --jobs 0

# Memory stays below three frames a job, measured while the program waits for more frames.
if [ ${#program[@]} = 1 ] && (ulimit -v 1000000; pxlcc info >/dev/null 2>&1); then
    mkfifo frames
    "${program[@]}" convert frames big.rgb24 --format i420 --size 1920x1080 --matrix 601 --jobs 3 &
    exec 3>frames
    head -c $((20 * 3110400)) /dev/zero >&3
    for i in $(seq 100); do [ "$(cat .pxlcc-*.unfinished 2>/dev/null | wc -c)" = $((20 * 6220800)) ] && break; sleep 0.1; done
    peak=$(awk '/VmHWM/ { print $2 }' /proc/$!/status)
    exec 3>&-
    wait $! || wrong "20 frames of 1920x1080"
    [ "$peak" -lt $((3 * 3 * 6075 + 12000)) ] || wrong "3 jobs take $peak KiB"
    rm big.rgb24
fi

# Numbers in names: %d is one, %% a percent sign, other percents are themselves; they start anywhere and have no gaps.
for i in 1 2 3; do works convert in_$i.ppm frame_$((i + 6)).png; done
works convert frame_%d.png all.rgb24
cat in_1.ppm in_2.ppm in_3.ppm >three.ppm
pxlcc convert - three.rgb24 <three.ppm || wrong "a stream of PPM"
same all.rgb24 three.rgb24
works convert frame_%d.png later.rgb24 --start 8
tail -c 1440 all.rgb24 | cmp - later.rgb24 || wrong "--start of IN"
works convert three.ppm out_%%_%03d.ppm --start 98
for i in 1 2 3; do same in_$i.ppm "out_%_$(printf %03d $((97 + i))).ppm"; done
works convert out_%%_%03d.ppm percent.rgb24
same all.rgb24 percent.rgb24
works convert in_1.ppm '100%.png'
works convert '100%.png' '5%%0.ppm'
same in_1.ppm '5%0.ppm'
cp in_1.ppm literal_%d.ppm
works convert literal_%d.ppm literal.rgb24
same in.rgb24 literal.rgb24
mv frame_8.png frame_10.png
pxlcc convert frame_%d.png gap.rgb24 2>stderr && wrong "a gap is accepted"
grep -q 'frame_8.png is missing before frame_9.png (1 frame before' stderr || wrong "a gap: $(cat stderr)"
fails 'no file is called like none_%d.png' convert none_%d.png out.rgb24
fails '--start is for numbered' convert in_1.ppm out.png --start 3
fails '--start: "x" is not a whole' convert frame_%d.png out.rgb24 --start x

# PNG streams out as well as in.
pxlcc convert three.ppm - --to png | pxlcc convert - stream.rgb24 || wrong "a stream of PNG"
same all.rgb24 stream.rgb24

# Alpha stays where both sides have it.
{ for i in $(seq 240); do printf 'abcd'; done; } >in.rgba
works convert in.rgba alpha.png --size 20x12
works convert alpha.png alpha.bgra
[ "$(samples alpha.bgra 0 | cut -d' ' -f1-4)" = '99 98 97 100' ] || wrong "alpha of bgra: $(samples alpha.bgra 0 | cut -d' ' -f1-4)"
works convert alpha.bgra back.rgba --size 20x12
same in.rgba back.rgba
works convert alpha.png opaque.ppm
works convert opaque.ppm opaque.rgba
[ "$(samples opaque.rgba 0 | cut -d' ' -f1-4)" = '97 98 99 255' ] || wrong "no alpha becomes opaque"

# Formats by any usual name; every layout of 4:2:0 and 4:2:2 into every other, there and back.
works convert in_1.ppm names.raw --to YUV420P
same one.i420 names.raw
works convert names.raw names.NV12 --format IYUV --size 20x12
for from in i420 yv12 nv12 nv21 i422 yuy2 yvyu uyvy; do works convert one.i420 from.$from --size 20x12; done
for from in i420 yv12 nv12 nv21; do
    for to in i420 yv12 nv12 nv21 i422 yuy2 yvyu uyvy; do
        works convert from.$from to.$to --size 20x12
        same from.$to to.$to
    done
    works convert to.uyvy back.$from --size 20x12
    same from.$from back.$from
    works convert from.$from $from.rgb24 --size 20x12 --matrix 709
    same i420.rgb24 $from.rgb24
done
works convert from.i422 packed.uyvy --size 20x12
pairs() { tail -c "$1" "$2" | od -An -tu1 -w2 -v | awk "{ print $3 }"; }
[ "$(pairs 120 from.nv21 '$2, $1')" = "$(pairs 120 from.nv12 '$1, $2')" ] || wrong "nv21 is not nv12 with Cr first"
[ "$(head -c 240 from.yvyu | od -An -tu1 -w4 -v | awk '{ print $1, $4, $3, $2 }')" = "$(head -c 240 from.yuy2 | od -An -tu1 -w4 -v | awk '{ print $1, $2, $3, $4 }')" ] ||
    wrong "yvyu is not yuy2 with Cr first"
works convert in_1.ppm made.nv21
works convert made.nv21 made.i420 --size 20x12
same one.i420 made.i420
fails '--format abc' convert one.i420 out.png --format abc --size 20x12
fails '--size: "20" is not' convert one.i420 out.png --size 20

# .pgm is gray, .ppm is in colour; mono is the luma, gray what it looks like.
works convert in_1.ppm weighed.pgm
works run pxliRGBToGray_8u_C3C1R in_1.ppm -o expected.pgm
same weighed.pgm expected.pgm
works convert gray.pgm colour.ppm
[ "$(tail -c 720 colour.ppm | od -An -tu1 -w3 -v | awk '$1 != $2 || $2 != $3' | wc -l)" = 0 ] || wrong "gray in colour"
works convert colour.ppm again.pgm
same gray.pgm again.pgm
works convert in_1.ppm mono.y4m --sampling mono
[ "$(head -1 mono.y4m)" = 'YUV4MPEG2 W20 H12 F25:1 Ip A1:1 Cmono' ] || wrong "header of mono: $(head -1 mono.y4m)"
tail -c 240 mono.y4m | cmp - <(head -c 240 one.i420) || wrong "mono is not the luma"
works convert mono.y4m mono.i420
tail -c 120 mono.i420 | cmp - <(head -c 120 /dev/zero | tr '\0' '\200') || wrong "chroma of mono"
works convert one.i420 look.pgm --size 20x12
works convert mono.y4m look.ppm
[ "$(samples look.pgm 13)" = "$(tail -c 720 look.ppm | od -An -tu1 -w3 -v | awk '{ print $1 }' | xargs)" ] || wrong "gray of video"
{ printf 'YUV4MPEG2 W20 H12 F25:1 Cmono XCOLORRANGE=FULL\nFRAME\n'; tail -c 240 gray.pgm; } >full.y4m
works convert full.y4m full.pgm
same gray.pgm full.pgm

# Full range: 709hdtv says it in what it writes; a note stands where samples are taken for what they are not.
works convert in_1.ppm hdtv.y4m --matrix 709HDTV
[ "$(head -1 hdtv.y4m)" = 'YUV4MPEG2 W20 H12 F25:1 Ip A1:1 XCOLORRANGE=FULL C420jpeg' ] || wrong "range: $(head -1 hdtv.y4m)"
works convert hdtv.y4m hdtv.ppm --matrix 709hdtv
says 'taken as studio range' convert hdtv.y4m hdtv.ppm
works convert hdtv.y4m kept.y4m --sampling 422
grep -q 'XCOLORRANGE=FULL C422' kept.y4m || wrong "a range is lost: $(head -1 kept.y4m)"
sed 's/FULL/LIMITED/' hdtv.y4m >studio.y4m
says 'studio-range samples; the matrix 709hdtv' convert studio.y4m studio.ppm --matrix 709hdtv
works convert studio.y4m studio.ppm --matrix 709
head -c 1382400 /dev/zero >hd.i420
says '1280x720 with the matrix 601; HD' convert hd.i420 hd.png --size 1280x720
works convert hd.i420 hd.png --size 1280x720 --matrix 709
works convert hd.i420 hd.nv12 --size 1280x720

# Pictures of every depth: single bits, palettes, largest values of their own, 16 bits.
{ printf 'P4\n9 2\n'; printf '\x80\x80\x00\x00'; } >bits.pbm
works convert bits.pbm bits.pgm
[ "$(samples bits.pgm 11)" = "0 255 255 255 255 255 255 255 0 255 255 255 255 255 255 255 255 255" ] || wrong "PBM: $(samples bits.pgm 11)"
works reduce gray.pgm bits.png --bilevel
works reduce gray.pgm expected.pgm --levels 2
works convert bits.png bits.pgm
same expected.pgm bits.pgm
printf 'P5\n3 1\n15\n\x00\x07\x0f' >fifteen.pgm
works convert fifteen.pgm fifteen_255.pgm
[ "$(samples fifteen_255.pgm 11)" = '0 119 255' ] || wrong "maximum of 15: $(samples fifteen_255.pgm 11)"
printf 'P6\n1 1\n1023\n\x00\x00\x02\x00\x03\xff' >ten.ppm
works convert ten.ppm ten_65535.ppm
[ "$(samples ten_65535.ppm 13)" = '0 0 128 32 255 255' ] || wrong "maximum of 1023: $(samples ten_65535.ppm 13)"
says '16 bits a sample; they are rounded to 8' convert ten.ppm ten.rgb24
[ "$(samples ten.rgb24 0)" = '0 128 255' ] || wrong "16 bits to 8: $(samples ten.rgb24 0)"
says 'rounded to 8' run pxliRGBToYCbCr_8u_C3R ten.ppm -o ten.png
works run pxliRGBToGray_16u_C3C1R ten.ppm -o ten_gray.png
works convert ten.ppm ten.png
works convert ten.png ten.rgb48
[ "$(samples ten.rgb48 0)" = '0 0 32 128 255 255' ] || wrong "rgb48: $(samples ten.rgb48 0)"
# 2 x 1 pixels of 4 bits with the palette 1,2,3 and 250,251,252, the second of which is transparent
{
    printf '\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\x02\0\0\0\x01\x04\x03\0\0\0\x06\x0c\x62\xb9'
    printf '\0\0\0\x06PLTE\x01\x02\x03\xfa\xfb\xfc\xfd\x5e\xe6\xa3'
    printf '\0\0\0\x02tRNS\xff\x07\x7b\xd3\xa5\xe9'
    printf '\x00\x00\x00\x0a\x49\x44\x41\x54\x78\x9c\x63\x60\x04\x00\x00\x03\x00\x02\x4b\xf5\xdd\xea\0\0\0\0IEND\xae\x42\x60\x82'
} >palette.png
works convert palette.png palette.rgba
[ "$(samples palette.rgba 0)" = '1 2 3 255 250 251 252 7' ] || wrong "palette: $(samples palette.rgba 0)"

# run: one file a plane, pictures for planes, pictures on standard input; odd sizes as in other programs.
works run pxliRGBToYCbCr_8u_C3P3R in_1.ppm -o y.pgm -o cb.raw -o cr.pgm
works run pxliRGBToYCbCr_8u_C3P3R in_1.ppm -o whole.raw
cat <(tail -c 240 y.pgm) cb.raw <(tail -c 240 cr.pgm) | cmp - whole.raw || wrong "one file a plane"
works run pxliYCbCrToRGB_8u_P3C3R y.pgm cb.raw cr.pgm --size 20x12 -o planes.ppm
works run pxliYCbCrToRGB_8u_P3C3R whole.raw --size 20x12 -o one.ppm
same one.ppm planes.ppm
works run pxliRGBToYCbCr_8u_C3P3R in_1.ppm -o joined.png
works run pxliRGBToYCbCr_8u_C3R in_1.ppm -o packed.png
works run pxliYCbCrToRGB_8u_P3C3R joined.png -o joined.ppm
same one.ppm joined.ppm
works run pxliRGBToYCbCr420_8u_C3P3R in_1.ppm -o y.pgm -o cb.pgm -o cr.pgm
works run pxliYCbCr420ToRGB_8u_P3C3R y.pgm cb.pgm cr.pgm -o 420.ppm
works run pxliYCbCr420ToRGB_8u_P3C3R one.i420 --size 20x12 -o i420.ppm
same 420.ppm i420.ppm
pxlcc run pxliRGBToGray_8u_C3C1R - -o piped.pgm <in_1.ppm || wrong "run of a picture on standard input"
same weighed.pgm piped.pgm
fails 'IN: 2 files; .* reads 3 planes' run pxliYCbCrToRGB_8u_P3C3R y.pgm cb.pgm -o out.ppm
fails 'has not the size' run pxliYCbCrToRGB_8u_P3C3R y.pgm cb.pgm cr.pgm -o out.ppm
head -c $((190 + 100)) clip.i420 >odd.i420
says 'writes 18x10 of 19x10 of plane 1' run pxliYCbCr420ToRGB_8u_P3C3R odd.i420 --size 19x10 -o odd.ppm
{ printf 'P6\n19 11\n255\n'; noise 627 8; } >odd.ppm
says '18x10 of 19x11 of plane 1, 9x5 of 10x6 of plane 2, 9x5 of 10x6 of plane 3' run pxliRGBToYCbCr420_8u_C3P3R odd.ppm -o odd.raw
[ "$(wc -c <odd.raw)" = $((19 * 11 + 2 * 10 * 6)) ] || wrong "size of an odd frame of run"

# Lists of numbers are read strictly; matrices on the command line and with comments in a file.
printf '# to sepia\n0.393, 0.769, 0.189, 0  # red\n0.349 0.686 0.168 0\n0.272,0.534,0.131,0\n' >sepia.txt
works run pxliColorTwist32f_8u_C3R in_1.ppm -o file.ppm --matrix-file sepia.txt
works run pxliColorTwist32f_8u_C3R in_1.ppm -o line.ppm --matrix '0.393,0.769,0.189,0, 0.349,0.686,0.168,0, 0.272,0.534,0.131,0'
same file.ppm line.ppm
for weights in 1,,0 1,0,0, ,1,0,0 1-2,3 1,0,nan 1,0,1e99 '1,0;0'; do
    fails '--weights: ' run pxliColorToGray_8u_C3C1R in_1.ppm -o out.pgm --weights="$weights"
done
fails '--levels: "4x" is not' run pxliReduceBits_8u_C3R in_1.ppm -o out.png --levels 4x
fails 'excludes' run pxliColorTwist32f_8u_C3R in_1.ppm -o out.ppm --matrix 1 --matrix-file sepia.txt

finish
