// Files and standard streams. An output appears under its name only when it is complete.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace pxl::tool {

struct CloseFile {
    void operator()(std::FILE* file) const;
};
using FilePointer = std::unique_ptr<std::FILE, CloseFile>;

// The bytes of a file, or of standard input for the path "-", in order.
class Input {
public:
    explicit Input(const std::string& path);

    // The path, or "standard input": for messages.
    const std::string& name() const { return name_; }
    // Returns fewer bytes than asked for only at the end of the file.
    std::size_t read(void* bytes, std::size_t count);
    // The next byte without taking it, -1 at the end.
    int peek();
    // Position of the next byte.
    std::int64_t offset() const { return offset_; }
    // Size of a regular file, -1 where it is not known.
    std::int64_t size() const { return size_; }

private:
    std::string name_;
    FilePointer file_;
    std::int64_t offset_ = 0;
    std::int64_t size_ = -1;
};

std::vector<std::uint8_t> readAll(Input& input);

// A file that is written beside its final name and renamed by commit(); without commit() nothing is left behind, also
// when the program is interrupted. Devices, pipes and standard output ("-") are written directly. One at a time.
class Output {
public:
    explicit Output(const std::string& path);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    void write(const void* bytes, std::size_t count);
    void commit();

private:
    std::string name_;
    std::string path_;
    std::string temporary_;  // empty when written directly
    FilePointer file_;
};

}  // namespace pxl::tool
