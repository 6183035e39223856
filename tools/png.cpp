// PNG through libpng. Its errors leave through longjmp, so nothing with a destructor lives where they can occur.
#include <png.h>

#include <csetjmp>
#include <cstring>
#include <utility>

#include "error.h"
#include "pictures.h"

namespace pxl::tool {

namespace {

// What libpng's callbacks need: where it reads from or writes to, and its message when it gives up.
struct Stream {
    Input* input = nullptr;
    std::vector<std::uint8_t> written = {};
    char message[128] = "";
};

void onError(png_structp png, png_const_charp text) {
    auto* stream = static_cast<Stream*>(png_get_error_ptr(png));
    std::strncpy(stream->message, text, sizeof stream->message - 1);
    std::longjmp(png_jmpbuf(png), 1);
}

void onWarning(png_structp, png_const_charp) {}

void readInput(png_structp png, png_bytep bytes, png_size_t count) {
    auto* stream = static_cast<Stream*>(png_get_io_ptr(png));
    const char* trouble = nullptr;
    try {
        if (stream->input->read(bytes, count) != count) trouble = "the file is truncated";
    } catch (const Error&) {  // must not pass through libpng
        trouble = "it cannot be read";
    }
    if (trouble != nullptr) png_error(png, trouble);
}

void append(png_structp png, png_bytep bytes, png_size_t count) {
    auto* stream = static_cast<Stream*>(png_get_io_ptr(png));
    stream->written.insert(stream->written.end(), bytes, bytes + count);
}

void flushNothing(png_structp) {}

// False if libpng gave up inside; the message is then in the Stream.
template <class Steps>
bool completes(png_structp png, const Steps& steps) {
    if (setjmp(png_jmpbuf(png)) != 0) return false;
    steps();
    return true;
}

struct Reader {
    explicit Reader(Stream* stream)
        : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, stream, onError, onWarning)),
          info(png_create_info_struct(png)) {
        png_set_read_fn(png, stream, readInput);
    }
    Reader(const Reader&) = delete;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
    png_structp png;
    png_infop info;
};

struct Writer {
    explicit Writer(Stream* stream)
        : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, stream, onError, onWarning)),
          info(png_create_info_struct(png)) {
        png_set_write_fn(png, stream, append, flushNothing);
    }
    Writer(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&png, &info); }
    png_structp png;
    png_infop info;
};

std::vector<png_bytep> rowPointers(const Image& picture) {
    const auto plane = picture.plane(0);
    std::vector<png_bytep> rows;
    for (std::int64_t y = 0; y < plane.rows; ++y) rows.push_back(plane.row(y));
    return rows;
}

// What deflate packs to less than a thousandth is not there; no memory is taken for such a claim.
void checkSamplesAreThere(Input& input, const Reader& reader) {
    constexpr std::int64_t kBestRatio = 1032, kSlack = 1024;
    const auto height = static_cast<std::int64_t>(png_get_image_height(reader.png, reader.info));
    const auto bytes = static_cast<std::int64_t>(png_get_rowbytes(reader.png, reader.info)) * height;
    const std::int64_t least = bytes / kBestRatio - kSlack;
    if (least > 0 && input.reach(least, bytes) < least)
        fail(input.name(), ": truncated, too short for the ", png_get_image_width(reader.png, reader.info), 'x', height,
             " pixels that its header claims");
}

}  // namespace

Image readPng(Input& input) {
    Stream stream{.input = &input};
    Reader reader(&stream);
    const auto giveUp = [&] { fail(input.name(), ": not a valid PNG file: ", stream.message); };
    if (!completes(reader.png, [&] { png_read_info(reader.png, reader.info); })) giveUp();

    checkSamplesAreThere(input, reader);

    const bool isWide = png_get_bit_depth(reader.png, reader.info) == 16;
    const bool hasAlpha = (png_get_color_type(reader.png, reader.info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                          png_get_valid(reader.png, reader.info, PNG_INFO_tRNS) != 0;
    const auto prepare = [&] {
        png_set_expand(reader.png);  // palettes, single bits and transparent colours
        if (hasAlpha) png_set_gray_to_rgb(reader.png);
        if (isWide) png_set_swap(reader.png);  // samples in the processor's byte order
        png_set_interlace_handling(reader.png);
        png_read_update_info(reader.png, reader.info);
    };
    if (!completes(reader.png, prepare)) giveUp();
    Image picture(pictureShape(isWide ? Element::u16 : Element::u8, png_get_channels(reader.png, reader.info)),
                  {static_cast<int>(png_get_image_width(reader.png, reader.info)),
                   static_cast<int>(png_get_image_height(reader.png, reader.info))});
    auto rows = rowPointers(picture);
    const auto read = [&] {
        png_read_image(reader.png, rows.data());
        png_read_end(reader.png, nullptr);
    };
    if (!completes(reader.png, read)) giveUp();
    return picture;
}

std::vector<std::uint8_t> encodePng(const Image& picture) {
    static constexpr int kColourTypes[] = {0, PNG_COLOR_TYPE_GRAY, 0, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_RGB_ALPHA};
    const auto& shape = picture.shape().planes[0];
    const int depth = shape.packedBits == 1 ? 1 : shape.element == Element::u8 ? 8 : 16;
    auto rows = rowPointers(picture);
    Stream stream;
    Writer writer(&stream);
    const auto write = [&] {
        png_set_IHDR(writer.png, writer.info, static_cast<png_uint_32>(picture.size().width),
                     static_cast<png_uint_32>(picture.size().height), depth, kColourTypes[shape.channels],
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_compression_level(writer.png, 4);
        png_write_info(writer.png, writer.info);
        if (shape.element == Element::u16) png_set_swap(writer.png);
        png_write_image(writer.png, rows.data());
        png_write_end(writer.png, writer.info);
    };
    if (!completes(writer.png, write)) fail("cannot write a PNG: ", stream.message);
    return std::move(stream.written);
}

}  // namespace pxl::tool
