#include "files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

#include "error.h"

namespace pxl::tool {

namespace {

// The temporary file that an interrupt has to remove; fixed memory because a signal handler reads it.
char unfinishedFile[4096];

void removeUnfinished(int signal) {
    if (unfinishedFile[0] != '\0') unlink(unfinishedFile);
    _exit(128 + signal);
}

void removeOnInterrupt(const std::string& path) {
    const std::size_t length = path.size() < sizeof unfinishedFile ? path.size() : 0;
    unfinishedFile[0] = '\0';
    std::memcpy(unfinishedFile + 1, path.c_str() + 1, length);
    unfinishedFile[0] = path[0];
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) std::signal(signal, removeUnfinished);
}

const char* reason() { return std::strerror(errno); }

}  // namespace

void CloseFile::operator()(std::FILE* file) const {
    if (file != stdin && file != stdout) std::fclose(file);
}

Input::Input(const std::string& path) : name_(path == "-" ? "standard input" : path) {
    file_.reset(path == "-" ? stdin : std::fopen(path.c_str(), "rb"));
    if (!file_) fail("cannot open ", path, ": ", reason());
    struct stat about {};
    if (fstat(fileno(file_.get()), &about) != 0) return;
    if (S_ISDIR(about.st_mode)) fail(path, " is a directory");
    if (S_ISREG(about.st_mode)) size_ = about.st_size;
}

std::size_t Input::read(void* bytes, std::size_t count) {
    const std::size_t got = std::fread(bytes, 1, count, file_.get());
    if (got < count && std::ferror(file_.get())) fail("cannot read ", name_, ": ", reason());
    offset_ += static_cast<std::int64_t>(got);
    return got;
}

int Input::peek() {
    const int byte = std::getc(file_.get());
    if (byte != EOF) std::ungetc(byte, file_.get());
    return byte == EOF ? -1 : byte;
}

std::vector<std::uint8_t> readAll(Input& input) {
    std::vector<std::uint8_t> bytes;
    constexpr std::size_t kStep = 1 << 20;
    for (std::size_t got = kStep; got == kStep;) {
        const std::size_t had = bytes.size();
        bytes.resize(had + kStep);
        got = input.read(bytes.data() + had, kStep);
        bytes.resize(had + got);
    }
    return bytes;
}

Output::Output(const std::string& path) : name_(path == "-" ? "standard output" : path), path_(path) {
    struct stat about {};
    if (path == "-") {
        file_.reset(stdout);
    } else if (stat(path.c_str(), &about) == 0 && !S_ISREG(about.st_mode)) {
        file_.reset(S_ISDIR(about.st_mode) ? nullptr : std::fopen(path.c_str(), "wb"));
        if (S_ISDIR(about.st_mode)) errno = EISDIR;
    } else {
        // The file that a symbolic link names is replaced, not the link.
        path_ = std::filesystem::weakly_canonical(path).string();
        temporary_ = path_ + ".unfinished-" + std::to_string(getpid());
        removeOnInterrupt(temporary_);
        file_.reset(std::fopen(temporary_.c_str(), "wbx"));
    }
    if (!file_) {
        const int error = errno;
        temporary_.clear();
        unfinishedFile[0] = '\0';
        fail("cannot write ", path, ": ", std::strerror(error));
    }
}

Output::~Output() {
    if (temporary_.empty()) return;
    unlink(temporary_.c_str());
    unfinishedFile[0] = '\0';
}

void Output::write(const void* bytes, std::size_t count) {
    if (std::fwrite(bytes, 1, count, file_.get()) != count) fail("cannot write ", name_, ": ", reason());
}

void Output::commit() {
    if (std::fflush(file_.get()) != 0) fail("cannot write ", name_, ": ", reason());
    if (temporary_.empty()) return;
    if (std::fclose(file_.release()) != 0) fail("cannot write ", name_, ": ", reason());
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) fail("cannot write ", name_, ": ", reason());
    unfinishedFile[0] = '\0';
    temporary_.clear();
}

}  // namespace pxl::tool
