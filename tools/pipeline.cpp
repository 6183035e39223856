#include "pipeline.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

#include "error.h"

namespace pxl::tool {

namespace {

class Run {
public:
    explicit Run(const Pipeline& pipeline) : pipeline_(pipeline) {}

    void job(std::optional<Frame> first) {
        try {
            Conversion conversion = pipeline_.newConversion();
            Frame frame = first ? std::move(*first) : Frame();
            if (first) pass(0, frame, conversion);
            while (const auto number = take(frame)) pass(*number, frame, conversion);
        } catch (...) {
            stopWith(std::current_exception());
        }
    }

    PipelineResult result() const {
        if (failure_) std::rethrow_exception(failure_);
        return {written_, trouble_};
    }

private:
    // The number of the frame, or nothing at the end.
    std::optional<std::int64_t> take(Frame& frame) {
        const std::lock_guard lock(reading_);
        if (ended_ || (pipeline_.mostFrames > 0 && taken_ == pipeline_.mostFrames)) return std::nullopt;
        try {
            if (pipeline_.source.take(frame)) return taken_++;
        } catch (const Error& error) {
            endWith(taken_, error.what());
        }
        ended_ = true;
        return std::nullopt;
    }

    void pass(std::int64_t number, Frame& frame, Conversion& conversion) {
        try {
            pipeline_.source.unpack(frame);
        } catch (const Error& error) {
            return endWith(number, error.what());
        }
        const Image& result = conversion.convert(frame.image);
        const Bytes packed = pipeline_.sink.pack(result);
        if (!waitForTurn(number)) return;
        pipeline_.sink.put(result, packed);
        pipeline_.onFrame(number + 1);
        const std::lock_guard lock(writing_);
        ++written_;
        turn_.notify_all();
    }

    bool waitForTurn(std::int64_t number) {
        std::unique_lock lock(writing_);
        turn_.wait(lock, [&] { return stopped_ || written_ == number; });
        return !stopped_;
    }

    // Frames before it are still written.
    void endWith(std::int64_t number, const std::string& trouble) {
        if (!waitForTurn(number)) return;
        const std::lock_guard lock(writing_);
        trouble_ = trouble;
        stopped_ = true;
        ended_ = true;
        turn_.notify_all();
    }

    void stopWith(const std::exception_ptr& failure) {
        const std::lock_guard lock(writing_);
        if (!failure_) failure_ = failure;
        stopped_ = true;
        ended_ = true;
        turn_.notify_all();
    }

    const Pipeline& pipeline_;
    std::mutex reading_, writing_;
    std::condition_variable turn_;
    std::atomic<bool> ended_ = false;       // no frame is taken any more
    bool stopped_ = false;                  // none is written any more
    std::int64_t taken_ = 1, written_ = 0;  // the first one is there
    std::optional<std::string> trouble_;
    std::exception_ptr failure_;
};

}  // namespace

PipelineResult runPipeline(const Pipeline& pipeline, Frame first) {
    Run run(pipeline);
    std::vector<std::jthread> others;
    for (int i = 1; i < pipeline.jobs; ++i) others.emplace_back([&run] { run.job(std::nullopt); });
    run.job(std::move(first));
    others.clear();
    return run.result();
}

}  // namespace pxl::tool
