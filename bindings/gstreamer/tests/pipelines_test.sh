#!/usr/bin/env bash
# The plugin in pipelines of gst-launch, as a user runs it.
# usage: pipelines_test.sh DIRECTORY_OF_THE_PLUGIN
set -uo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export GST_PLUGIN_PATH=$1 GST_REGISTRY=$scratch/registry GST_DEBUG_NO_COLOR=1

failures=0
fail() {
    echo "FAILED: $*" >&2
    failures=$((failures + 1))
}
# shellcheck disable=SC2086  # a pipeline is words
launch() { timeout 60 gst-launch-1.0 $1 >"$scratch/output" 2>&1; }
runs() { launch "$1" || { fail "$1"; cat "$scratch/output"; }; }
# refuses TEXT PIPELINE: it fails, and says TEXT.
refuses() {
    if launch "$2"; then fail "should not run: $2"; fi
    grep -qF "$1" "$scratch/output" || { fail "does not say '$1': $2"; cat "$scratch/output"; }
}

inspected=$(gst-inspect-1.0 pxlccconvert) || fail "gst-inspect-1.0 pxlccconvert"
for word in "Exact colour converter" Filter/Converter/Video video/x-bayer v210 demosaic filter-chroma bt709; do
    [[ $inspected == *"$word"* ]] || fail "gst-inspect-1.0 does not show '$word'"
done

# A frame of one colour and an odd size, red 32, green 192, blue 224 in every pixel of the result.
flat() { # CAPS_AND_MORE
    rm -f "$scratch/rgb"
    runs "videotestsrc num-buffers=1 pattern=solid-color foreground-color=0xff20c0e0 ! $1 ! pxlccconvert !
          video/x-raw,format=RGB ! filesink location=$scratch/rgb"
    # 33 pixels of 3 bytes in rows of 100; the last is that of the last row.
    local pixel offset i expected=(32 192 224)
    for offset in 0 48 $((100 * 16 + 96)); do
        read -ra pixel <<<"$(od -An -v -tu1 -j "$offset" -N 3 "$scratch/rgb")"
        for i in 0 1 2; do
            ((${pixel[i]:--99} - expected[i] <= 3 && ${pixel[i]:--99} - expected[i] >= -3)) ||
                fail "$1: byte $offset is ${pixel[*]:-missing}"
        done
    done
}
size=width=33,height=17
for format in I420 YV12 NV12 NV21 Y42B Y444; do flat "video/x-raw,format=$format,colorimetry=bt601,$size"; done
# Of an odd width the source leaves the last pair of packed pixels incomplete.
for format in YUY2 YVYU UYVY; do flat "video/x-raw,format=RGB,$size ! videoconvert ! video/x-raw,format=$format"; done
flat "video/x-raw,format=RGB,$size"
for format in rggb bggr grbg gbrg; do flat "video/x-bayer,format=$format,$size"; done
flat "video/x-raw,format=BGRA,$size ! pxlccconvert ! video/x-raw,format=I420"
flat "video/x-raw,format=NV12,colorimetry=bt601,$size ! pxlccconvert ! video/x-raw,format=UYVY"
# BT.709 has its own matrix, with BGR only.
flat "video/x-raw,format=I420,colorimetry=bt709,$size ! pxlccconvert ! video/x-raw,format=BGR ! videoconvert"
flat "video/x-raw,format=BGR,$size ! pxlccconvert ! video/x-raw,format=NV12,colorimetry=bt709 ! pxlccconvert !
      video/x-raw,format=I420 ! pxlccconvert ! video/x-raw,format=BGR ! videoconvert"

# What people do with it.
runs "videotestsrc num-buffers=30 ! pxlccconvert ! fakesink"
runs "videotestsrc num-buffers=30 ! video/x-raw,width=1280,height=720 ! pxlccconvert ! video/x-raw,format=BGR ! fakesink"
runs "videotestsrc num-buffers=10 ! video/x-raw,format=NV12 ! tee name=t
      t. ! queue ! pxlccconvert ! video/x-raw,format=RGB ! fakesink
      t. ! queue ! pxlccconvert ! video/x-raw,format=I420 ! fakesink"
runs "videotestsrc num-buffers=2 ! video/x-raw,interlace-mode=interleaved,format=I420 ! pxlccconvert !
      video/x-raw,format=UYVY ! fakesink"
runs "videotestsrc num-buffers=2 ! video/x-raw,format=v210,width=1920,height=1080 ! pxlccconvert !
      video/x-raw,format=GRAY16_LE ! fakesink"
# A camera with raw samples, live, that is looked at and written to files.
runs "videotestsrc is-live=true do-timestamp=true num-buffers=10 !
      video/x-bayer,format=grbg,width=640,height=480,framerate=30/1 ! queue !
      pxlccconvert demosaic=vng ! video/x-raw,format=BGRx ! tee name=t
      t. ! queue ! videoconvert ! jpegenc ! multifilesink location=$scratch/%02d.jpg
      t. ! queue ! fakesink sync=true"
[[ -s $scratch/09.jpg ]] || fail "the camera's pictures are missing"
for method in bilinear ahd; do
    runs "videotestsrc num-buffers=2 ! video/x-bayer,format=rggb ! pxlccconvert demosaic=$method !
          video/x-raw,format=RGB ! fakesink"
done

# What it must not do: the message says why, and what is possible.
# The sink does not wait for a first picture, or gst-launch would sometimes wait for it after the error.
head -c 100000 /dev/zero >"$scratch/frames"
refuses "there is no conversion from NV12 (BT.709) to RGB" \
    "filesrc location=$scratch/frames ! rawvideoparse width=64 height=48 format=nv12 colorimetry=bt709 !
     pxlccconvert ! video/x-raw,format=RGB ! fakesink async=false"
refuses "can't handle caps video/x-raw, format=(string)Y42B" \
    "videotestsrc num-buffers=1 ! video/x-raw,format=NV21 ! pxlccconvert ! video/x-raw,format=Y42B ! fakesink"
refuses "could not link" "videotestsrc num-buffers=1 ! video/x-raw,format=AYUV ! pxlccconvert ! fakesink"

((failures == 0)) && echo "All pipelines behave"
exit $((failures > 0))
