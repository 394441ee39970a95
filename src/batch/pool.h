// A pool of worker processes: the store is one a process, so each worker has a store of its own.
#pragma once

#include <functional>
#include <string>

namespace vael {

/// What a worker makes of job `index`; the bytes go back to the parent.
using PoolJob = std::function<std::string(int index)>;
/// Called in the parent for jobs 0, 1, 2, ... in this order, as soon as each is there. `lost` tells
/// why its worker ended without a result; it is empty for a job that was done.
using PoolResult =
    std::function<void(int index, const std::string& bytes, const std::string& lost)>;

/// Forks `workers` processes before anything else, hands out the jobs 0 to count - 1 one at a time,
/// and puts the results in order. A worker that dies costs its job and is replaced. A worker is
/// also replaced after `jobsAWorker` jobs, since some readers keep their files open to the end of
/// the process. `progress` is told how many jobs are done. Once `stop` is true no more jobs are
/// handed out, and those that run are waited for; the workers do not hear the terminal's interrupt.
/// Returns how many jobs have their result. Faults: Argument when no process can be made.
int RunPool(
    int workers, int count, int jobsAWorker, const PoolJob& job, const PoolResult& result,
    const std::function<void(int done)>& progress = [](int) {},
    const std::function<bool()>& stop = [] { return false; });

}  // namespace vael
