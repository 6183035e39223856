// Files and standard streams. An output appears under its name only when it is complete.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace pxl::tool {

// Closes it, except standard input, which stays open.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) : number_(number) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }
    int number() const { return number_; }
    void reset(int number);
    // False if what was written before could not be kept.
    bool close();

private:
    int number_;
};

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
    // How many of the next `count` bytes there are, asked before memory is taken for them: what a header claims may not
    // be there. A pipe is read ahead for that; where little memory is asked for they are believed to be there.
    std::int64_t reach(std::int64_t count, std::int64_t memory);

private:
    std::size_t receive(void* bytes, std::size_t count);

    std::string name_;
    FileDescriptor file_;
    std::vector<std::uint8_t> buffer_;  // bytes that have come and are not taken yet: from taken_ to filled_
    std::size_t taken_ = 0, filled_ = 0;
    std::int64_t offset_ = 0;
    std::int64_t size_ = -1;
};

// The whole file as text; longer ones than `limit` bytes are an error.
std::string readText(const std::string& path, std::size_t limit);

// A file that is written beside its final name and renamed by commit(); without commit() nothing is left behind, also
// when the program is interrupted. A file of that name passes its mode on and must not be write-protected; links are
// followed. Devices, pipes, standard output ("-") and descriptors (/dev/stdout, /dev/fd/3) are written directly.
class Output {
public:
    explicit Output(const std::string& path);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    void write(const void* bytes, std::size_t count);
    void write(const std::string& text) { write(text.data(), text.size()); }
    void commit();
    // Whether more may follow: standard output, a pipe, a device.
    bool isStream() const { return isStream_; }

private:
    void openBeside(const std::string& path, const struct stat* existing);
    void send(const void* bytes, std::size_t count);
    [[noreturn]] void failWriting() const;

    std::string name_;
    std::string path_;
    std::string temporary_;  // empty when written directly
    bool isStream_ = false;
    FileDescriptor file_;
    std::vector<std::uint8_t> buffer_;
};

}  // namespace pxl::tool
