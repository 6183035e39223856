#include "files.h"

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <optional>

#include "error.h"

namespace pxl::tool {

namespace {

constexpr std::size_t kBufferBytes = 64 << 10;    // what is read or written in small pieces is gathered up to this size
constexpr std::size_t kBelievedBytes = 32 << 20;  // memory is taken without asking whether the bytes are there
constexpr int kPipeBytes = 1 << 20;               // what a pipe may hold: fewer changes between the two programs

std::string reason() { return std::strerror(errno); }

void widenPipe(int file, const struct stat& about) {
    if (S_ISFIFO(about.st_mode)) fcntl(file, F_SETPIPE_SZ, kPipeBytes);  // not more than a wish
}

// ---- the files that an interrupt has to remove; fixed memory because a signal handler reads it

constexpr std::size_t kLongestPath = 4096;
struct Unfinished {
    std::atomic<bool> isUsed = false;
    char path[kLongestPath] = "";
};
std::array<Unfinished, 16> unfinishedFiles;

// Then the signal, which is back at its default, ends the program.
void removeUnfinished(int signal) {
    for (const Unfinished& file : unfinishedFiles)
        if (file.isUsed) unlink(file.path);
    raise(signal);
}

void handleInterrupts() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXCPU}) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;  // nohup, for one
        action.sa_handler = removeUnfinished;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

void removeOnInterrupt(const std::string& path) {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    handleInterrupts();
    for (Unfinished& file : unfinishedFiles) {
        if (file.isUsed || path.size() >= kLongestPath) continue;
        std::memcpy(file.path, path.c_str(), path.size() + 1);
        file.isUsed = true;
        return;
    }
}

void keepOnInterrupt(const std::string& path) {
    for (Unfinished& file : unfinishedFiles)
        if (file.isUsed && path == file.path) file.isUsed = false;
}

// ---- what a path names

// The number of an own descriptor that a name in /proc/self/fd stands for.
std::optional<int> descriptorOf(const std::filesystem::path& folder, const std::string& name) {
    const std::string own = "/proc/" + std::to_string(getpid()) + "/";
    if (folder.string().rfind(own, 0) != 0 || folder.filename() != "fd") return std::nullopt;
    int number = 0;
    const auto parsed = std::from_chars(name.data(), name.data() + name.size(), number);
    if (parsed.ec != std::errc() || parsed.ptr != name.data() + name.size()) return std::nullopt;
    return number;
}

// Where the links of a path end: at a file, which may not be there yet, or at a descriptor of this program.
struct Place {
    std::filesystem::path path;
    std::optional<int> descriptor;
};
Place follow(const std::string& path) {
    constexpr int kMostLinks = 40;
    Place place = {path, std::nullopt};
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code error;
        const auto parent = place.path.parent_path();
        const auto folder = std::filesystem::canonical(parent.empty() ? "." : parent, error);
        if (error) break;
        place.descriptor = descriptorOf(folder, place.path.filename().string());
        if (place.descriptor || !std::filesystem::is_symlink(place.path, error) || error) break;
        const auto target = std::filesystem::read_symlink(place.path, error);
        if (error) break;
        place.path = target.is_absolute() ? target : folder / target;
    }
    return place;
}

}  // namespace

void FileDescriptor::reset(int number) {
    close();
    number_ = number;
}

bool FileDescriptor::close() {
    const int number = number_;
    number_ = -1;
    return number <= STDIN_FILENO || ::close(number) == 0;
}

// ---- Input

Input::Input(const std::string& path)
    : name_(path == "-" ? "standard input" : path),
      file_(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (file_.number() < 0) fail("cannot open ", path, ": ", reason());
    struct stat about {};
    if (fstat(file_.number(), &about) != 0) return;
    if (S_ISDIR(about.st_mode)) fail(path, " is a directory");
    widenPipe(file_.number(), about);
    if (!S_ISREG(about.st_mode)) return;
    const off_t start = lseek(file_.number(), 0, SEEK_CUR);  // standard input may have been read before
    size_ = std::max<std::int64_t>(0, about.st_size - std::max<off_t>(0, start));
}

std::size_t Input::receive(void* bytes, std::size_t count) {
    std::size_t got = 0;
    while (got < count) {
        const ssize_t more = ::read(file_.number(), static_cast<std::uint8_t*>(bytes) + got, count - got);
        if (more == 0) break;
        if (more < 0 && errno == EINTR) continue;
        if (more < 0) fail("cannot read ", name_, ": ", reason());
        got += static_cast<std::size_t>(more);
    }
    return got;
}

std::size_t Input::read(void* bytes, std::size_t count) {
    auto* to = static_cast<std::uint8_t*>(bytes);
    std::size_t got = 0;
    while (got < count) {
        if (taken_ < filled_) {
            const std::size_t part = std::min(count - got, filled_ - taken_);
            std::memcpy(to + got, buffer_.data() + taken_, part);
            taken_ += part;
            got += part;
        } else if (count - got >= kBufferBytes) {
            const std::size_t part = receive(to + got, count - got);
            got += part;
            if (got < count) break;
        } else if (peek() < 0) {
            break;
        }
    }
    offset_ += static_cast<std::int64_t>(got);
    return got;
}

int Input::peek() {
    if (taken_ == filled_) {
        if (buffer_.size() != kBufferBytes) buffer_ = std::vector<std::uint8_t>(kBufferBytes);
        taken_ = filled_ = 0;
        ssize_t got = 0;
        do {
            got = ::read(file_.number(), buffer_.data(), buffer_.size());
        } while (got < 0 && errno == EINTR);
        if (got < 0) fail("cannot read ", name_, ": ", reason());
        filled_ = static_cast<std::size_t>(got);
    }
    return taken_ < filled_ ? buffer_[taken_] : -1;
}

std::int64_t Input::reach(std::int64_t count, std::int64_t memory) {
    if (size_ >= 0) return std::min(count, size_ - offset_);
    if (memory <= static_cast<std::int64_t>(kBelievedBytes)) return count;
    const auto wanted = static_cast<std::size_t>(count);
    buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(taken_));
    filled_ -= taken_;
    taken_ = 0;
    while (filled_ < wanted) {
        buffer_.resize(std::min(wanted, std::max(kBelievedBytes, 2 * filled_)));
        const std::size_t got = receive(buffer_.data() + filled_, buffer_.size() - filled_);
        filled_ += got;
        if (filled_ < buffer_.size()) break;
    }
    return static_cast<std::int64_t>(std::min(filled_, wanted));
}

std::string readText(const std::string& path, std::size_t limit) {
    Input input(path);
    std::string text(limit + 1, '\0');
    text.resize(input.read(text.data(), text.size()));
    if (text.size() > limit) fail(input.name(), ": more than ", limit, " bytes");
    return text;
}

// ---- Output

Output::Output(const std::string& path) : name_(path == "-" ? "standard output" : path) {
    const Place place = path == "-" ? Place{"", STDOUT_FILENO} : follow(path);
    path_ = place.path.string();
    struct stat about {};
    const bool exists = !place.descriptor && stat(path_.c_str(), &about) == 0;
    if (place.descriptor) {
        file_.reset(dup(*place.descriptor));
    } else if (exists && S_ISDIR(about.st_mode)) {
        errno = EISDIR;
    } else if (exists && !S_ISREG(about.st_mode)) {
        file_.reset(open(path_.c_str(), O_WRONLY | O_CLOEXEC));
    } else {
        openBeside(path_, exists ? &about : nullptr);
    }
    if (file_.number() < 0) failWriting();
    isStream_ = temporary_.empty();
    if (fstat(file_.number(), &about) == 0) widenPipe(file_.number(), about);
    buffer_.reserve(kBufferBytes);
}

// In the same folder, so that renaming is one step; under a name of its own length, as that of the file may be the
// longest there can be.
void Output::openBeside(const std::string& path, const struct stat* existing) {
    static std::atomic<int> count = 0;
    constexpr mode_t kAnyWriter = 0222, kPermissions = 07777, kNewFile = 0666;
    // Without the test of the mode the superuser would replace what somebody protected.
    if (existing != nullptr && ((existing->st_mode & kAnyWriter) == 0 || access(path.c_str(), W_OK) != 0))
        fail("cannot write ", name_, ": it is write-protected");
    const auto folder = std::filesystem::path(path).parent_path();
    const std::string name = ".pxlcc-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".unfinished";
    const std::string temporary = (folder / name).string();
    removeOnInterrupt(temporary);
    file_.reset(open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFile));
    if (file_.number() >= 0) {
        temporary_ = temporary;
        if (existing == nullptr) return;
        if (fchown(file_.number(), existing->st_uid, existing->st_gid) != 0) errno = 0;  // then it becomes the user's
        if (fchmod(file_.number(), existing->st_mode & kPermissions) != 0) failWriting();
        return;
    }
    const int error = errno;
    keepOnInterrupt(temporary);
    // A folder that takes no new file may hold one that can be written.
    if (existing != nullptr && (error == EACCES || error == EPERM || error == EROFS))
        file_.reset(open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    else
        errno = error;
}

Output::~Output() {
    if (temporary_.empty()) return;
    unlink(temporary_.c_str());
    keepOnInterrupt(temporary_);
}

void Output::failWriting() const { fail("cannot write ", name_, ": ", reason()); }

// What waits in the buffer, then these bytes.
void Output::send(const void* bytes, std::size_t count) {
    iovec pieces[] = {{buffer_.data(), buffer_.size()}, {const_cast<void*>(bytes), count}};
    std::size_t first = 0;
    while (first < std::size(pieces)) {
        if (pieces[first].iov_len == 0) {
            ++first;
            continue;
        }
        const ssize_t sent = writev(file_.number(), pieces + first, static_cast<int>(std::size(pieces) - first));
        if (sent < 0 && errno == EINTR) continue;
        if (sent < 0) failWriting();
        for (auto left = static_cast<std::size_t>(sent); left > 0 && first < std::size(pieces);) {
            const std::size_t part = std::min(left, pieces[first].iov_len);
            pieces[first].iov_base = static_cast<std::uint8_t*>(pieces[first].iov_base) + part;
            pieces[first].iov_len -= part;
            left -= part;
            if (pieces[first].iov_len == 0) ++first;
        }
    }
    buffer_.clear();
}

void Output::write(const void* bytes, std::size_t count) {
    if (buffer_.size() + count > kBufferBytes) return send(bytes, count);
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    buffer_.insert(buffer_.end(), first, first + count);
}

void Output::commit() {
    send(nullptr, 0);
    if (!file_.close()) failWriting();
    if (temporary_.empty()) return;
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) failWriting();
    keepOnInterrupt(temporary_);
    temporary_.clear();
}

}  // namespace pxl::tool
