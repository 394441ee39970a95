// A pool of worker processes: the store is one a process, so each worker has a store of its own.
#include "batch/pool.h"

#include "core/fault.h"

#include <poll.h>  // processes and pipes of the system
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <vector>

namespace vael {
namespace {

bool ReadWhole(int fd, void* to, std::size_t size) {
    auto* at = static_cast<char*>(to);
    while (size > 0) {
        const ssize_t got = ::read(fd, at, size);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        at += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

bool WriteWhole(int fd, const void* from, std::size_t size) {
    const auto* at = static_cast<const char*>(from);
    while (size > 0) {
        const ssize_t put = ::write(fd, at, size);
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) return false;
        at += put;
        size -= static_cast<std::size_t>(put);
    }
    return true;
}

struct Worker {
    pid_t Process = -1;
    int To = -1;    // job numbers
    int From = -1;  // sizes and bytes of results
    int Job = -1;   // -1: idle
    int Done = 0;
};

[[noreturn]] void Serve(int from, int to, const PoolJob& job) {
    std::int32_t index = 0;
    while (ReadWhole(from, &index, sizeof index)) {
        const std::string bytes = job(index);
        const std::uint64_t size = bytes.size();
        if (!WriteWhole(to, &size, sizeof size) || !WriteWhole(to, bytes.data(), bytes.size()))
            break;
    }
    ::_exit(0);
}

class Pool {
public:
    Pool(int workers, const PoolJob& job) : job_(job), workers_(static_cast<std::size_t>(workers)) {
        previous_ = std::signal(SIGPIPE, SIG_IGN);
        for (Worker& worker : workers_) Start(worker);
    }
    ~Pool() {
        for (Worker& worker : workers_) (void)Stop(worker);
        std::signal(SIGPIPE, previous_);
    }
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    int Run(int count, int jobsAWorker, const PoolResult& result,
            const std::function<void(int)>& progress, const std::function<bool()>& stop) {
        int next = 0;
        int told = 0;
        int done = 0;
        std::map<int, std::pair<std::string, std::string>> waiting;
        while (told < count) {
            if (stop()) count = next;  // what is under way is waited for
            if (told == count) break;
            for (Worker& worker : workers_) {
                if (worker.Job >= 0 || next >= count) continue;
                if (worker.Done >= jobsAWorker) Renew(worker);
                worker.Job = next++;
                const std::int32_t number = worker.Job;
                (void)WriteWhole(worker.To, &number, sizeof number);  // its death is seen by Take
            }
            for (auto& [index, outcome] : Take()) {
                waiting[index] = std::move(outcome);
                progress(++done);
            }
            while (!waiting.empty() && waiting.begin()->first == told) {
                const auto& [bytes, lost] = waiting.begin()->second;
                result(told, bytes, lost);
                waiting.erase(waiting.begin());
                ++told;
            }
        }
        return told;
    }

private:
    using Outcomes = std::vector<std::pair<int, std::pair<std::string, std::string>>>;

    void Start(Worker& worker) {
        int down[2];
        int up[2];
        if (::pipe(down) != 0) Refuse();
        if (::pipe(up) != 0) Refuse();
        const pid_t process = ::fork();
        if (process < 0) Refuse();
        if (process == 0) {
            for (const Worker& other : workers_)
                for (const int fd : {other.To, other.From})
                    if (fd >= 0) ::close(fd);
            ::close(down[1]);
            ::close(up[0]);
            std::signal(SIGINT, SIG_IGN);  // the parent decides when the run ends
            Serve(down[0], up[1], job_);
        }
        ::close(down[0]);
        ::close(up[1]);
        worker = {.Process = process, .To = down[1], .From = up[0], .Job = -1, .Done = 0};
    }

    [[noreturn]] static void Refuse() {
        throw Fault(FaultNumber::Argument,
                    std::string("No worker process can be made: ") + std::strerror(errno) + ".");
    }

    /// Why the worker ended.
    static std::string Stop(Worker& worker) {
        if (worker.Process < 0) return {};
        ::close(worker.To);
        ::close(worker.From);
        int status = 0;
        while (::waitpid(worker.Process, &status, 0) < 0 && errno == EINTR) {
        }
        worker = Worker{};
        if (WIFSIGNALED(status))
            return std::string("its worker was ended by signal ") +
                   std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) + ")";
        return "its worker ended with status " + std::to_string(WEXITSTATUS(status));
    }

    void Renew(Worker& worker) {
        (void)Stop(worker);
        Start(worker);
    }

    /// Waits for at least one result or death.
    Outcomes Take() {
        std::vector<pollfd> polls;
        for (const Worker& worker : workers_)
            polls.push_back(
                {.fd = worker.Job >= 0 ? worker.From : -1, .events = POLLIN, .revents = 0});
        if (::poll(polls.data(), polls.size(), -1) < 0)
            return {};  // a signal: look at `stop` first
        Outcomes out;
        for (std::size_t k = 0; k < workers_.size(); ++k) {
            if (polls[k].revents == 0) continue;
            Worker& worker = workers_[k];
            const int index = worker.Job;
            std::uint64_t size = 0;
            std::string bytes;
            bool whole = ReadWhole(worker.From, &size, sizeof size);
            if (whole) {
                bytes.resize(size);
                whole = ReadWhole(worker.From, bytes.data(), size);
            }
            if (whole) {
                worker.Job = -1;
                ++worker.Done;
                out.push_back({index, {std::move(bytes), {}}});
            } else {
                const std::string reason = Stop(worker);
                Start(worker);
                out.push_back({index, {{}, reason}});
            }
        }
        return out;
    }

    const PoolJob& job_;
    std::vector<Worker> workers_;
    void (*previous_)(int) = nullptr;
};

}  // namespace

int RunPool(int workers, int count, int jobsAWorker, const PoolJob& job, const PoolResult& result,
            const std::function<void(int)>& progress, const std::function<bool()>& stop) {
    Pool pool(std::clamp(workers, 1, std::max(1, count)), job);
    return pool.Run(count, jobsAWorker, result, progress, stop);
}

}  // namespace vael
