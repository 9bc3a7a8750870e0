// No job is waited for while another one could go on: two psf that each have what the other one needs would never end.
#include "programs/psf/base/Jobs.h"

#include "programs/psf/base/Session.h"

#include <algorithm>
#include <cstdio>
#include <list>

namespace tessaly::psf {

namespace {

// As many as an interruption ends, and as Windows waits for at once.
constexpr std::size_t MostJobs = 64;

void StartAll(std::list<Job*>& waiting, std::vector<Job*>& running, std::size_t count) {
    for (auto each = waiting.begin(); each != waiting.end() && running.size() < count;) {
        if ((*each)->Start(false)) {
            running.push_back(*each);
            each = waiting.erase(each);
        } else {
            ++each;
        }
    }
    if (running.empty() && !waiting.empty() && waiting.front()->Start(true)) {
        running.push_back(waiting.front());
        waiting.pop_front();
    }
}

void WaitForAny(const std::vector<Job*>& running) {
    std::vector<RunningProcess*> processes;
    for (Job* job : running) {
        if (job->Process() == nullptr) {
            return;
        }
        processes.push_back(job->Process());
    }
    RunningProcess::WaitForAny(processes);
}

} // namespace

int RunJobs(std::vector<std::unique_ptr<Job>> jobs, std::size_t count) {
    count = std::clamp<std::size_t>(count, 1, MostJobs);
    std::list<Job*> waiting;
    for (const std::unique_ptr<Job>& job : jobs) {
        waiting.push_back(job.get());
    }
    std::vector<Job*> running;
    std::vector<const Job*> ended; // and not told of
    int status = Success;
    for (std::size_t told = 0; told < jobs.size();) {
        StartAll(waiting, running, count);
        WaitForAny(running);
        const auto firstEnded =
            std::stable_partition(running.begin(), running.end(), [](Job* job) { return !job->HasEnded(); });
        ended.insert(ended.end(), firstEnded, running.end());
        running.erase(firstEnded, running.end());
        while (told < jobs.size() && std::erase(ended, jobs[told].get()) > 0) {
            const int each = jobs[told]->Tell();
            std::fflush(stdout); // a long run is watched
            status = status == Success ? each : status;
            jobs[told++].reset();
        }
    }
    return status;
}

} // namespace tessaly::psf
