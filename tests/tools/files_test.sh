#!/usr/bin/env bash
# What the program does to files, links, devices and pipes. Usage: files_test.sh PROGRAM (or: EMULATOR ARGUMENTS PROGRAM)
. "$(dirname "$0")/support.sh"

{ printf 'P6\n19 10\n255\n'; head -c 570 /dev/zero | tr '\0' 'x'; } >in.ppm
tail -c 570 in.ppm >in.rgb24
leftovers() { [ -z "$(ls -A | grep unfinished)" ] || wrong "$1 leaves a temporary file"; }

# Signals: one that was ignored stays ignored; others end the program and leave nothing behind.
mkfifo pipe
started() { for i in $(seq 100); do [ -n "$(ls -A | grep unfinished)" ] && return; sleep 0.1; done; wrong "$1 never starts"; }
(trap '' HUP; exec "${program[@]}" convert pipe patient.rgb24 --format rgb24 --size 19x10 2>stderr) &
exec 3>pipe
cat in.rgb24 >&3
started "a run without SIGHUP"
kill -HUP $!
cat in.rgb24 >&3
exec 3>&-
wait $! || wrong "a run that ignores SIGHUP: exit status $?, $(cat stderr)"
[ "$(wc -c <patient.rgb24)" = 1140 ] || wrong "a run that ignores SIGHUP is cut short"
for signal in HUP TERM; do
    "${program[@]}" convert pipe killed.rgb24 --format rgb24 --size 19x10 2>stderr &
    exec 3>pipe
    cat in.rgb24 >&3
    started "a run until SIG$signal"
    kill -$signal $!
    wait $! 2>/dev/null
    [ $? = $((128 + $(kill -l $signal))) ] || wrong "exit status after SIG$signal"
    exec 3>&-
    [ ! -e killed.rgb24 ] || wrong "SIG$signal: half a file under its name"
    leftovers "SIG$signal"
done
head -c 3000000 /dev/zero >long.rgb24
(
    ulimit -f 100
    fails 'File too large' convert long.rgb24 cut.bgr24 --size 1000x1000
    exit $failures
)
failures=$((failures + $?))
leftovers "a file that grows too large"

# Files that are there already: protected ones stay, others keep their mode, links stay links.
cp in.ppm protected.ppm
chmod 444 protected.ppm
fails 'protected.ppm: it is write-protected' convert in.ppm protected.ppm
echo old >mode.ppm
chmod 640 mode.ppm
ln -s mode.ppm link.ppm
ln -s nothing.ppm dangling.ppm
mkdir folder
ln -s ../deep.ppm folder/up.ppm
works convert in.ppm link.ppm
works convert in.ppm dangling.ppm
works convert in.ppm folder/up.ppm
[ -L link.ppm ] && [ -L dangling.ppm ] && [ -L folder/up.ppm ] || wrong "a link is replaced"
for file in mode.ppm nothing.ppm deep.ppm; do same in.ppm $file; done
[ "$(stat -c %a mode.ppm)" = 640 ] || wrong "the mode becomes $(stat -c %a mode.ppm)"
long=$(head -c 251 /dev/zero | tr '\0' n).ppm
works convert in.ppm "$long"
same in.ppm "$long"
leftovers "convert"

# Devices and descriptors are written, not replaced.
works convert in.ppm /dev/null --to rgb24
[ -c /dev/null ] || wrong "/dev/null is replaced"
echo first >appended
pxlcc convert in.ppm /dev/stdout --to rgb24 >>appended || wrong "convert to /dev/stdout"
pxlcc run pxliRGBToGray_8u_C3C1R in.ppm -o /dev/fd/7 7>>appended || wrong "run to /dev/fd/7"
{ echo first; cat in.rgb24; head -c 190 /dev/zero | tr '\0' 'x'; } >expected
same expected appended

# Headers that claim gigabytes cost nothing: a file is compared with its size, of a pipe is taken what comes.
claim=65000
printf 'YUV4MPEG2 W%d H%d\nFRAME\n' $claim $claim >claim.y4m
printf 'P6\n%d %d\n65535\n' $claim $claim >claim.ppm
printf 'P4\n%d00 %d00\n' $claim $claim >claim.pbm
printf 'PF\n%d %d\n-1\n' $claim $claim >claim.pfm
# IHDR of 65000 x 65000 RGBA with 16 bits, and the start of an IDAT
printf '\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\xfd\xe8\0\0\xfd\xe8\x10\x06\0\0\0\xf2\xc7\x05\x49\0\0\x7f\xffIDATx\x9c' >claim.png
little=1000000
# An emulator or a sanitizer takes more by itself.
[ ${#program[@]} = 1 ] && (ulimit -v $little; pxlcc info >/dev/null 2>&1) || little=unlimited
(
    ulimit -v $little
    for kind in y4m ppm pbm png; do
        fails 'truncated\|not a valid PNG' convert claim.$kind out.rgb24
        cat claim.$kind - </dev/null | pxlcc convert - out.rgb24 2>stderr
        grep -q 'truncated\|not a valid PNG' stderr || wrong "a claim in a pipe: $(cat stderr)"
    done
    fails 'truncated' run pxliRGBToHLS_32f_C3R claim.pfm -o out.pfm
    fails 'truncated' run pxliRGBToYCbCr_8u_C3R in.rgb24 --size ${claim}x$claim -o out.raw
    cat claim.y4m long.rgb24 | pxlcc convert - out.rgb24 2>stderr
    grep -q 'truncated, 3000000 of 6337500000 bytes' stderr || wrong "a claim before 3 MB: $(cat stderr)"
    exit $failures
)
failures=$((failures + $?))
fails 'more than 4096 bytes' run pxliColorTwist32f_8u_C3R in.ppm -o out.ppm --matrix-file /dev/zero

# Messages are one line whatever a file is called.
name=$'two\nlines\e[2J.png'
fails 'two\\x0alines' convert "$name" out.ppm
works convert in.ppm "$name"
fails 'two\\x0alines' run pxliRGBToYCbCr_8u_C3R "$name" --size 3x3 -o out.png

# Endings of files that are not written.
for name in out.jpg out.TIFF out.mp4 out.webp; do
    fails 'are not written' run pxliRGBToYCbCr_8u_C3R in.ppm -o $name
    fails 'are not written' convert in.ppm $name --to rgb24
done
fails 'see pxlcc convert' run pxliRGBToYCbCr_8u_C3R in.ppm -o out.y4m
fails 'a .pgm is gray' run pxliRGBToYCbCr_8u_C3R in.ppm -o out.pgm
fails 'a .ppm is in colour' run pxliRGBToGray_8u_C3C1R in.ppm -o out.ppm
fails 'says something else' convert in.ppm out.ppm --to png

finish
