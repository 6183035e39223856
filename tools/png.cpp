// PNG through libpng. Its errors leave through longjmp, so nothing with a destructor lives where they can occur.
#include <png.h>

#include <csetjmp>
#include <cstring>

#include "error.h"
#include "pictures.h"

namespace pxl::tool {

namespace {

struct Memory {
    std::vector<std::uint8_t> bytes;
    std::size_t position = 0;
    char message[128] = "";
};

void onError(png_structp png, png_const_charp text) {
    auto* memory = static_cast<Memory*>(png_get_error_ptr(png));
    std::strncpy(memory->message, text, sizeof memory->message - 1);
    std::longjmp(png_jmpbuf(png), 1);
}

void onWarning(png_structp, png_const_charp) {}

void readMemory(png_structp png, png_bytep bytes, png_size_t count) {
    auto* memory = static_cast<Memory*>(png_get_io_ptr(png));
    if (count > memory->bytes.size() - memory->position) png_error(png, "the file is truncated");
    std::memcpy(bytes, memory->bytes.data() + memory->position, count);
    memory->position += count;
}

void appendMemory(png_structp png, png_bytep bytes, png_size_t count) {
    auto* memory = static_cast<Memory*>(png_get_io_ptr(png));
    memory->bytes.insert(memory->bytes.end(), bytes, bytes + count);
}

void flushMemory(png_structp) {}

// False if libpng gave up inside; the message is then in the Memory.
template <class Steps>
bool completes(png_structp png, const Steps& steps) {
    if (setjmp(png_jmpbuf(png)) != 0) return false;
    steps();
    return true;
}

struct Reader {
    explicit Reader(Memory* memory)
        : png(png_create_read_struct(PNG_LIBPNG_VER_STRING, memory, onError, onWarning)),
          info(png_create_info_struct(png)) {
        png_set_read_fn(png, memory, readMemory);
    }
    Reader(const Reader&) = delete;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
    png_structp png;
    png_infop info;
};

struct Writer {
    explicit Writer(Memory* memory)
        : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, memory, onError, onWarning)),
          info(png_create_info_struct(png)) {
        png_set_write_fn(png, memory, appendMemory, flushMemory);
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

}  // namespace

Image readPng(Input& input) {
    Memory memory{readAll(input)};
    Reader reader(&memory);
    const auto giveUp = [&] { fail(input.name(), ": not a valid PNG file: ", memory.message); };
    if (!completes(reader.png, [&] { png_read_info(reader.png, reader.info); })) giveUp();

    const int depth = png_get_bit_depth(reader.png, reader.info);
    const int colour = png_get_color_type(reader.png, reader.info);
    if (colour == PNG_COLOR_TYPE_PALETTE) fail(input.name(), ": a palette PNG; only gray, RGB and RGBA are read");
    if (depth < 8) fail(input.name(), ": a PNG with ", depth, " bits a sample; only 8 and 16 are read");
    if (colour == PNG_COLOR_TYPE_GRAY_ALPHA) png_set_gray_to_rgb(reader.png);
    if (depth == 16) png_set_swap(reader.png);  // samples in the processor's byte order
    const int channels = colour == PNG_COLOR_TYPE_GRAY ? 1 : (colour & PNG_COLOR_MASK_ALPHA) != 0 ? 4 : 3;

    Image picture(pictureShape(depth == 8 ? Element::u8 : Element::u16, channels),
                  {static_cast<int>(png_get_image_width(reader.png, reader.info)),
                   static_cast<int>(png_get_image_height(reader.png, reader.info))});
    auto rows = rowPointers(picture);
    const auto read = [&] {
        png_set_interlace_handling(reader.png);
        png_read_update_info(reader.png, reader.info);
        png_read_image(reader.png, rows.data());
        png_read_end(reader.png, nullptr);
    };
    if (!completes(reader.png, read)) giveUp();
    return picture;
}

void writePng(Output& output, const Image& picture) {
    static constexpr int kColourTypes[] = {0, PNG_COLOR_TYPE_GRAY, 0, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_RGB_ALPHA};
    const auto& shape = picture.shape().planes[0];
    auto rows = rowPointers(picture);
    Memory memory;
    Writer writer(&memory);
    const auto write = [&] {
        png_set_IHDR(writer.png, writer.info, static_cast<png_uint_32>(picture.size().width),
                     static_cast<png_uint_32>(picture.size().height), shape.element == Element::u8 ? 8 : 16,
                     kColourTypes[shape.channels], PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        png_set_compression_level(writer.png, 4);
        png_write_info(writer.png, writer.info);
        if (shape.element == Element::u16) png_set_swap(writer.png);
        png_write_image(writer.png, rows.data());
        png_write_end(writer.png, writer.info);
    };
    if (!completes(writer.png, write)) fail("cannot write a PNG: ", memory.message);
    output.write(memory.bytes.data(), memory.bytes.size());
}

}  // namespace pxl::tool
