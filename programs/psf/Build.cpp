// What several builds at once have in common with one.
#include "programs/psf/Build.h"

#include "app/CompilerCommand.h"
#include "programs/psf/BuildJob.h"

namespace tessaly::psf {

int Build(Session& session, const std::vector<std::string>& files, const BuildOptions& options) {
    const bool isOne = files.size() == 1;
    if (options.output && !isOne) {
        PrintError("build: --output is for one file");
        return WrongUsage;
    }
    const BuildPlan plan = isOne ? BuildPlan{ReadCompilerSettings(session.files)} : PlanForMany(session.files);
    std::vector<std::unique_ptr<Job>> jobs;
    for (const std::string& file : files) {
        jobs.push_back(std::make_unique<BuildJob>(session, file, options.output.value_or(OutputName(file)), plan));
    }
    return RunJobs(std::move(jobs), plan.ownCFiles ? options.jobs : 1);
}

} // namespace tessaly::psf
