#!/usr/bin/env bash
# Runs the program as a user would. Usage: tool_test.sh PROGRAM (or: tool_test.sh EMULATOR ARGUMENTS ... PROGRAM)
. "$(dirname "$0")/support.sh"

# A picture of 19 x 10 pixels: more than a group wide, with a tail.
{ printf 'P6\n# a comment\n19 10\n255\n'; for i in $(seq 570); do bytes $((i * 37 % 256)); done; } >in.ppm
tail -c 570 in.ppm >in.rgb

pxlcc info >/dev/null || exit 1
works info
grep -q '2022.2.0' stdout || wrong "info shows no version"
works list ToYCbCr_8u_C3R
grep -q pxliRGBToYCbCr_8u_C3R stdout || wrong "list does not find an export"
works list --json  # calls every function with each wrong argument
[ "$(grep -c '^{"name":' stdout)" -gt 400 ] || wrong "list --json does not hold every export"
works list --json RGBToYUV420_8u_C3P3R
grep -q '"wrong":"47 x 47","status":35}' stdout || wrong "list --json does not tell what an odd size gets: $(cat stdout)"
fails 'no export' list there_is_none
works --version
grep -q "^pxlcc 2022.2.0" stdout || wrong "--version: $(cat stdout)"
fails "pxlcc: --sizee: no such" convert --sizee 19x10 in.rgb
fails "pxlcc: foo: no such command" foo

# Raw pictures of a sensor: a flat one is flat in colour, by every method, in 8 and 16 bits.
{ printf 'P5\n8 6\n255\n'; for i in 1 2 3; do for j in 1 2 3 4; do bytes 9 80; done; for j in 1 2 3 4; do bytes 80 200; done; done; } >raw.pgm
{ printf 'P6\n8 6\n255\n'; for i in $(seq 48); do bytes 9 80 200; done; } >flat.ppm
{ printf 'P5\n8 6\n65535\n'; for i in 1 2 3; do for j in 1 2 3 4; do bytes 1 2 3 4; done; for j in 1 2 3 4; do bytes 3 4 5 6; done; done; } >raw16.pgm
{ printf 'P6\n8 6\n65535\n'; for i in $(seq 48); do bytes 1 2 3 4 5 6; done; } >flat16.ppm
for method in bilinear vng ahd; do
    works convert raw.pgm colour.ppm --bayer rggb --method $method
    same colour.ppm flat.ppm
    works convert raw16.pgm colour16.ppm --bayer rggb --method $method
    same colour16.ppm flat16.ppm
done
works run pxliDemosaicAHD_8u_C1C3R raw.pgm -o colour.ppm --bayer rggb
same colour.ppm flat.ppm
works run pxliCFAToBGRA_VNG_8u_C1C4R raw.pgm -o gained.raw --bayer rggb --gains 0.5,1,1
[ "$(od -An -tu1 -j0 -N3 gained.raw | tr -s ' ')" = " 100 80 9" ] || wrong "run --gains"
{ printf 'P6\n16 16\n255\n'; for i in 1 2 3 4 5 6; do tail -c 144 flat.ppm; done | head -c 768; } >even.ppm
works demosaic-quality even.ppm
grep -q '^| even | inf | inf | inf | inf |' stdout || wrong "demosaic-quality of one colour: $(cat stdout)"
fails 'smaller than' demosaic-quality in.ppm
fails 'needs the colours' run pxliCFAToRGB_8u_C1C3R raw.pgm -o colour.ppm
fails 'colour picture' convert in.ppm colour2.ppm --bayer rggb
fails 'for raw pictures' convert in.ppm colour2.ppm --method vng

# run: pictures and raw samples hold the same, whatever the order of the colours in the export's name.
works run pxliRGBToYCbCr_8u_C3R in.ppm -o packed.png
works run pxliRGBToYCbCr_8u_C3R in.rgb --size 19x10 -o packed.raw
works run pxliRGBToYCbCr_8u_C3R in.ppm -o packed.ppm
tail -c 570 packed.ppm >packed.samples
same packed.raw packed.samples
works run RGBToYCbCr_8u_C3P3R in.ppm -o planes.raw
works run pxliYCbCrToRGB_8u_P3C3R planes.raw --size 19x10 -o rgb.ppm
works run pxliYCbCrToBGR_8u_P3C3R planes.raw --size 19x10 -o bgr.ppm --repeat 2
grep -q 'ns/pixel' stdout || wrong "run --repeat prints no time"
same rgb.ppm bgr.ppm
works run pxliYCbCrToBGR_8u_P3C4R planes.raw --size 19x10 -o bgra.raw --alpha 7
[ "$(od -An -tu1 -j3 -N1 bgra.raw)" -eq 7 ] || wrong "run --alpha is not the fourth byte"
works run pxliYCbCrToRGB_8u_P3C4R planes.raw --size 19x10 -o rgba.png
works run pxliRGBToYCbCr_8u_AC4P3R rgba.png -o again.raw
works run pxliRGBToYCbCr_8u_C3P3R rgba.png -o once.raw
same again.raw once.raw
pxlcc run pxliYCbCrToRGB_8u_P3C3R - --size 19x10 -o - <planes.raw >piped.rgb || wrong "run in a pipe"
tail -c 570 rgb.ppm >rgb.samples
same piped.rgb rgb.samples

echo '0.4 0.8 0.2, 0  0.3 0.7 0.2 1  0.2 0.5 0.1 1.5' >matrix.txt
works run pxliColorTwist32f_8u_C3R in.ppm -o twisted.ppm --matrix-file matrix.txt
works run pxliColorTwist32f_8u_C3IR in.ppm -o twisted_in_place.ppm --matrix-file matrix.txt --repeat 3
same twisted.ppm twisted_in_place.ppm
works run pxliColorToGray_8u_C3C1R in.ppm -o first.pgm --weights 1,0,0
[ "$(tail -c 190 first.pgm | od -An -tu1 -w1 -v)" = "$(od -An -tu1 -w1 -v in.rgb | sed -n '1~3p')" ] || wrong "run --weights"
# floats, red and below in the file a gray, in both byte orders; the first row of a file is the lowest one
{ printf 'PF\n1 2\n-1.0\n'; bytes 0 0 128 63 0 0 0 0 0 0 0 0 0 0 0 63 0 0 0 63 0 0 0 63; } >floats.pfm
{ printf 'PF\n1 2\n1\n'; bytes 63 128 0 0 0 0 0 0 0 0 0 0 63 0 0 0 63 0 0 0 63 0 0 0; } >floats_high.pfm
works run pxliRGBToHLS_32f_C3R floats.pfm -o hls.pfm
works run pxliRGBToHLS_32f_C3R floats_high.pfm -o hls_high.pfm
same hls.pfm hls_high.pfm
works run pxliRGBToHLS_32f_C3R floats.pfm -o hls.f32
[ "$(od -An -tf4 -w24 hls.f32 | xargs)" = "0 0.5 0 0 0.5 1" ] || wrong "run of a PFM: rows or samples"
works run pxliHLSToRGB_32f_C3R hls.pfm -o rgb.pfm
same floats.pfm rgb.pfm
works run pxliRGBToGray_32f_C3C1R floats.pfm -o gray.pfm
[ "$(head -c 2 gray.pfm)" = Pf ] || wrong "run to a gray PFM"
fails 'only a raw file or a PFM' run pxliRGBToHLS_32f_C3R in.ppm -o hls.pfm
# planes are raw samples, one plane after the other: red and black, and nothing else is printed
bytes 0 0 128 63 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 >planes.f32
works run pxliRGBToLab_32f_P3R planes.f32 --size 2x1 -o lab.f32
[ ! -s stdout ] || wrong "run of planes prints $(cat stdout)"
[ "$(od -An -tf4 -w24 lab.f32 | xargs)" = "53.240585 0 80.09416 0 67.20152 0" ] || wrong "run of planes: their order"
works run pxliRGBToLab_32f_P3R planes.f32 --size 2x1 -o lab.pfm
[ "$(tail -c 24 lab.pfm | od -An -tf4 -w24 | xargs)" = "53.240585 80.09416 67.20152 0 0 0" ] || wrong "run of planes to a PFM"
fails 'no PFM' run pxliRGBToHLS_8u_C3R floats.pfm -o hls.png
fails 'no fourth channel' run pxliRGBToHLS_32f_AC4R floats.pfm -o hls4.pfm
head -c 20 floats.pfm >short.pfm
fails 'truncated' run pxliRGBToHLS_32f_C3R short.pfm -o out.pfm
printf 'PF\n1 2\nx\n' >bad.pfm
fails 'not a valid PFM header' run pxliRGBToHLS_32f_C3R bad.pfm -o out.pfm
printf 'P6\n19 10\n65535\n' | cat - in.rgb in.rgb >deep.ppm
works run pxliRGBToGray_16u_C3C1R deep.ppm -o deep_gray.png
works run pxliGrayToRGB_16u_C1C4R deep_gray.png -o deep_gray_rgba.png --alpha 1000

# run: bad input.
head -c 400 in.ppm >short.ppm
head -c 60 packed.png >short.png
fails 'no export is called pxliRGBToYCbCr_8u_C9R; near it: ' run pxliRGBToYCbCr_8u_C9R in.ppm -o out.png
fails 'none.png: No such file' run pxliRGBToYCbCr_8u_C3R none.png -o out.png
fails 'truncated' run pxliRGBToYCbCr_8u_C3R short.ppm -o out.png
fails 'truncated' run pxliRGBToYCbCr_8u_C3R short.png -o out.png
cp in.rgb wrong.png
fails 'neither a PNG nor' run pxliRGBToYCbCr_8u_C3R wrong.png -o out.png
fails 'truncated' run pxliRGBToYCbCr_8u_C3R in.rgb --size 19x11 -o out.png
fails 'too long' run pxliRGBToYCbCr_8u_C3R in.rgb --size 19x9 -o out.png
fails 'size' run pxliRGBToYCbCr_8u_C3R in.rgb -o out.png
fails 'not a size' run pxliRGBToYCbCr_8u_C3R in.rgb --size 19 -o out.png
fails 'only a raw file' run pxliRGBToYCbCr420_8u_C3P3R in.ppm -o out.png
fails 'takes no --alpha' run pxliRGBToYCbCr_8u_C3R in.ppm -o out.png --alpha 3
fails '--alpha 256' run pxliYCbCrToBGR_8u_P3C4R planes.raw --size 19x10 -o out.png --alpha 256
fails 'needs a matrix' run pxliColorTwist32f_8u_C3R in.ppm -o out.png
fails '3 numbers where 12' run pxliColorTwist32f_8u_C3R in.ppm -o out.png --matrix-file <(echo 1 2 3)
fails '"x" is not a number' run pxliColorToGray_8u_C3C1R in.ppm -o out.png --weights 1,x,0
fails 'cannot write' run pxliRGBToYCbCr_8u_C3R in.ppm -o missing/out.png
fails 'No space' run pxliRGBToYCbCr_8u_C3R in.ppm -o /dev/full
fails 'required' run pxliRGBToYCbCr_8u_C3R in.ppm

# convert: frames through pictures and back, in files and in pipes.
frame() { head -c 570 planes.raw; }
{ printf 'YUV4MPEG2 W19 H10 F30:1 Ip A1:1 C444\n'; for i in 1 2 3; do printf 'FRAME\n'; frame; done; } >clip.y4m
works convert clip.y4m frame_%03d.png
[ "$(ls frame_*.png)" = "$(printf 'frame_%03d.png\n' 1 2 3)" ] || wrong "numbered pictures"
works convert clip.y4m clip.rgb24
works convert frame_%03d.png pictures.rgb24
same clip.rgb24 pictures.rgb24
cat rgb.samples rgb.samples rgb.samples >expected.rgb24
same clip.rgb24 expected.rgb24
works convert clip.y4m clip.yuv --to i444
{ frame; frame; frame; } >expected.yuv
same clip.yuv expected.yuv
works convert clip.yuv again.y4m --format i444 --size 19x10 --rate 30
same clip.y4m again.y4m
pxlcc convert - - --to ppm <clip.y4m 2>stderr | pxlcc convert - - --sampling 444 2>>stderr | head -1 >header
[ "$(cat header)" = 'YUV4MPEG2 W19 H10 F25:1 Ip A1:1 C444' ] && [ ! -s stderr ] || wrong "convert in a pipe: $(cat stderr)"

# convert: chroma of odd sizes is rounded up, and the last column and row are not lost.
works convert in.ppm odd.y4m --matrix 709
[ "$(tail -n +2 odd.y4m | wc -c)" = $((6 + 190 + 2 * 50)) ] || wrong "size of an odd 4:2:0 frame"
works convert in.ppm odd.yv12
works convert odd.yv12 odd.i420 --size 19x10
works convert in.ppm direct.i420
same odd.i420 direct.i420
head -c 295 /dev/zero | tr '\0' '\200' >gray.i420
for size in 19x10 10x19 1x1; do
    head -c $((${size%x*} * ${size#*x} + 2 * ((${size%x*} + 1) / 2) * ((${size#*x} + 1) / 2))) gray.i420 >odd.i420
    works convert odd.i420 odd.rgb24 --size $size
    [ "$(od -An -tu1 -w1 -v odd.rgb24 | sort | uniq -c | xargs)" = "$((3 * ${size%x*} * ${size#*x})) 130" ] || wrong "gray of $size"
done

# convert: whole frames before the fault are kept, nothing else.
head -c 1400 clip.y4m >short.y4m
sed 's/^FRAME$/FRAMES/' clip.y4m >malformed.y4m
pxlcc convert - kept_%d.png <short.y4m 2>stderr && wrong "a truncated stream is accepted"
grep -q 'frame 3 at byte 1189: truncated, 205 of 570 .*(2 frames before' stderr || wrong "message: $(cat stderr)"
[ "$(echo kept_*)" = 'kept_1.png kept_2.png' ] || wrong "frames before the fault: $(echo kept_*)"
pxlcc convert short.y4m kept.rgb24 2>/dev/null && wrong "a truncated stream is accepted"
[ "$(wc -c <kept.rgb24)" = 1140 ] || wrong "whole frames before the fault"
fails 'frame 1 at byte .* malformed' convert malformed.y4m out.rgb24
fails 'truncated' convert clip.yuv out.png --format i444 --size 40x40
fails 'more than one frame' convert clip.y4m out.png
fails 'H4x is no width' convert - out.png <<<'YUV4MPEG2 W4 H4x'
fails 'W4294967300 is no width' convert - out.png <<<'YUV4MPEG2 W4294967300 H4'
fails 'no height' convert - out.png <<<'YUV4MPEG2 W4'
fails 'truncated' convert clip.yuv out.png --size 65536x65536 --format i420
fails 'more than 1024' convert - out.png <<<"YUV4MPEG2 W4 H4 $(head -c 1100 /dev/zero | tr '\0' X)"
fails 'has to be a picture' convert clip.y4m out.y4m --sampling 420
fails 'matrix' convert clip.y4m out.y4m --matrix 601
for rate in 0 abc 1:2:3; do fails 'frames a second' convert in.ppm out.y4m --rate $rate; done
fails 'is a directory' convert . out.png

# convert: a stream of PNG files holds as many frames; garbage after one is an error.
cat frame_*.png | pxlcc convert - stream.rgb24 || wrong "PNG stream"
same clip.rgb24 stream.rgb24
{ cat frame_001.png; echo garbage; } | pxlcc convert - stream.rgb24 2>stderr && wrong "garbage after a PNG is accepted"

# convert: samplings and layouts without RGB, there and back; fields and filters on a height that fills no block.
works convert in.ppm plain.i420
works convert plain.i420 plain.i422 --size 19x10
for route in yuy2 'yuy2 yvyu' 'yuy2 uyvy' 'uyvy yuy2' yvyu; do
    last=i422
    for next in $route i422; do
        works convert plain.$last route.$next --size 19x10
        mv route.$next plain.$next.new
        [ $next = i422 ] || mv plain.$next.new plain.$next
        last=$next
    done
    same plain.i422 plain.i422.new
done
head -c 24 /dev/zero >flat.raw
works run pxliYCbCr420ToYCrCb420_Filter_8u_P2P3R flat.raw --size 4x4 -o smooth.raw --part 21
fails '--part' run pxliRGBToYCbCr_8u_C3R in.ppm -o out.png --part 1
works convert plain.i422 back.i420 --size 19x10
same plain.i420 back.i420
works convert plain.yuy2 wide.y4m --size 19x10
works convert wide.y4m narrow.y4m --sampling 420
[ "$(head -1 narrow.y4m)" = 'YUV4MPEG2 W19 H10 F25:1 Ip A1:1 C420jpeg' ] || wrong "header of a .y4m of another sampling"
tail -n +2 narrow.y4m | tail -c +7 >narrow.i420
same plain.i420 narrow.i420
for option in --interlaced --filter; do
    works convert gray.i420 gray.i422 --size 10x19 --frames 1 $option
    [ "$(od -An -tu1 -w1 -v gray.i422 | sort -u | xargs)" = 128 ] || wrong "$option changes a gray frame"
    fails "$option: no such conversion" convert plain.yuy2 out.uyvy --size 19x10 $option
done
pxlcc convert plain.i420 out.i422 --size 19x10 --interlaced --verbose 2>stderr && grep -q pxliYCbCr420To422_Interlace_8u_P3R stderr ||
    wrong "--interlaced: $(cat stderr)"
cmp -s out.i422 plain.i422 && wrong "--interlaced is ignored"

# convert: 4:2:0 chroma between planes and pairs.
works convert in.ppm direct.nv12
works convert direct.nv12 pairs.i420 --size 19x10
same direct.i420 pairs.i420
works convert pairs.i420 pairs.nv21 --size 19x10
works convert pairs.nv21 pairs.y4m --size 19x10
works convert pairs.y4m pairs.nv12
same direct.nv12 pairs.nv12
fails 'with the matrix 709; there is one with 601' convert in.ppm out.y4m --sampling 444 --matrix 709
fails 'give their size' convert pictures.rgb24 out.y4m
fails 'for raw frames give' convert planes.raw out.png
fails 'does not say what to write' convert clip.y4m out.thing
fails 'kind C420p10' convert - out.png <<<'YUV4MPEG2 W4 H4 C420p10'
fails 'W0 is no width' convert - out.png <<<'YUV4MPEG2 W0 H4'
fails 'holds no frame' convert - out.png <<<'YUV4MPEG2 W4 H4'

# reduce: fewer levels, single bits, floats. The picture is a ramp of 16 gray values.
{ printf 'P5\n16 2\n255\n'; for i in $(seq 0 31); do bytes $((i % 16 * 17)); done; } >ramp.pgm
works reduce ramp.pgm two.pgm --levels 2
[ "$(tail -c 32 two.pgm | od -An -tu1 -v | tr -s ' \n' '\n' | sort -u | tr -d '\n')" = 0255 ] || wrong "reduce --levels 2"
works reduce ramp.pgm all.pgm --levels 16 --dither bayer
same ramp.pgm all.pgm
works reduce in.ppm colours.png --levels 4 --dither fs --noise 20
works run pxliReduceBits_8u_C3R in.ppm -o run.png --levels 4 --dither fs --noise 20
same colours.png run.png
works reduce ramp.pgm bits.pbm --threshold 119
[ "$(tail -c 4 bits.pbm | od -An -tx1)" = " ff 00 ff 00" ] || wrong "bits of reduce: $(od -An -tx1 bits.pbm)"
works reduce in.ppm bits.png --bilevel --dither stucki
[ "$(od -An -tu1 -j24 -N2 bits.png)" = "   1   0" ] || wrong "reduce --bilevel makes no PNG of one bit"
works reduce deep.ppm shallow.png --levels 256 --depth 8
# rows from the lowest on, low byte first: 0 and 1 above, 0.5 and -1 below
{ printf 'Pf\n2 2\n-1.0\n'; bytes 0 0 0 63 0 0 128 191 0 0 0 0 0 0 128 63; } >floats.pfm
works reduce floats.pfm floats.pgm --levels 256
[ "$(tail -c 4 floats.pgm | od -An -tu1)" = "   0 255 127   0" ] || wrong "floats of reduce: $(tail -c 4 floats.pgm | od -An -tu1)"
works reduce floats.pfm tone.pgm --levels 256 --tone mean
[ "$(tail -c 4 tone.pgm | od -An -tu1)" = "   0 255 255   0" ] || wrong "tone mapping: $(tail -c 4 tone.pgm | od -An -tu1)"
fails 'gray PFM' reduce in.ppm out.png --levels 4 --tone linear
printf 'PF\n9 9\n1\n' >short.pfm
fails 'truncated' reduce short.pfm out.png --levels 4
fails 'say how many' reduce in.ppm out.png
fails 'none or stucki' reduce in.ppm out.pbm --dither fs
fails '--levels' reduce in.ppm out.png --levels 1
fails 'only binary PBM' convert floats.pfm out.png
# convert: 4:2:2 in planes, packed and in y4m; rows of an odd width end with a whole pair.
works convert in.ppm direct.i422
works convert in.ppm sampled.y4m --sampling 422
[ "$(head -1 sampled.y4m)" = 'YUV4MPEG2 W19 H10 F25:1 Ip A1:1 C422' ] || wrong "header of 4:2:2: $(head -1 sampled.y4m)"
works convert sampled.y4m sampled.i422
same direct.i422 sampled.i422
works convert in.ppm direct.yuy2
chroma() { od -An -tu1 -w4 -v "$2" | awk "{ print \$$1 }"; }
[ "$(chroma 2 direct.yuy2)" = "$(tail -c 200 direct.i422 | head -c 100 | od -An -tu1 -w1 -v | tr -d ' ')" ] || wrong "Cb of yuy2"
works convert in.ppm direct.yvyu
[ "$(chroma 2 direct.yvyu)" = "$(chroma 4 direct.yuy2)" ] && [ "$(chroma 1 direct.yvyu)" = "$(chroma 1 direct.yuy2)" ] || wrong "yvyu"
works convert in.ppm direct.uyvy
[ "$(chroma 2 direct.uyvy)" = "$(chroma 1 direct.yuy2)" ] && [ "$(chroma 1 direct.uyvy)" = "$(chroma 2 direct.yuy2)" ] || wrong "uyvy"
works convert in.ppm hdtv.uyvy --matrix 709hdtv
for format in yuy2 yvyu uyvy; do
    works convert direct.$format back.$format.ppm --size 19x10
    head -c 80 gray.i420 >odd.$format
    works convert odd.$format odd.rgb24 --size 19x2
    [ "$(od -An -tu1 -w1 -v odd.rgb24 | sort | uniq -c | xargs)" = "114 130" ] || wrong "gray of $format"
done

# convert: v210 rows of 128 bytes to 10-bit gray and to saturated colours.
printf '\x00\x02\x01\x20\x41\x00\x28\x04\x00\x0e\x01\x20\x44\x00\x58\x04\x00\x52\x00\x20' >row.v210
{ cat row.v210; head -c 108 /dev/zero; cat row.v210; head -c 108 /dev/zero; } >rows.v210
works convert rows.v210 rows.pgm --size 7x2
[ "$(tail -c 14 rows.pgm | od -An -tu1 | xargs)" = '0 64 0 65 0 66 0 67 0 68 0 69 0 20' ] || wrong "gray of v210"
works convert rows.v210 rows.png --size 7x2
works convert rows.v210 rows.rgb565 --size 7x2
[ "$(tail -c 4 rows.rgb565 | od -An -tu1 | xargs)" = '255 255 148 162' ] || wrong "colours of v210"
fails 'truncated' convert row.v210 out.pgm --size 7x1
fails 'from v210 to rgb24' convert rows.v210 out.rgb24 --size 7x2
fails 'matrix 709hdtv' convert rows.v210 out.pgm --size 7x2 --matrix 601
works run pxliYUV422v210ToBGR_709HDTV_32u16u_C3 row.v210 --size 7x1 -o row.565
same row.565 <(tail -c 14 rows.rgb565)

# demo: a row and three pictures for each conversion.
works demo pictures
rows=$(grep -cE '[0-9]\.[0-9]+ ' stdout)
[ "$rows" -gt 3 ] && [ "$(ls pictures/*-difference-*.png | wc -l)" = "$rows" ] || wrong "demo: $rows rows, $(ls pictures)"
[ "$(grep -c -E '^(gray|sepia).* 0\.[0-9]+ ' stdout)" = 2 ] || wrong "demo: gray and sepia are off: $(cat stdout)"
for picture in pictures/source.png pictures/contact-sheet.png pictures/ditherings.png; do [ -s $picture ] || wrong "demo makes no $picture"; done

# generations: a picture of one gray does not change.
{ printf 'P6\n16 8\n255\n'; head -c 384 /dev/zero | tr '\0' '\200'; } >one_gray.ppm
works generations --image one_gray.ppm
[ "$(grep -c 'dB |$' stdout)" = 8 ] && [ "$(grep -c '+0.00, +0.00' stdout)" = 8 ] || wrong "generations of a gray: $(cat stdout)"

finish
