// The cases, in groups. Names are GROUP/WHO or GROUP/OPERATION/...; table.py knows them by these names.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

// The files that all cases use; they lie in the page cache before the first case runs.
struct BenchFiles {
    std::string disk;   // a folder on a disk
    std::string memory; // a folder that lives in memory

    std::string psf;            // 100 MB
    std::string ini;            // 100 MB
    std::string saved;          // what saving `psf` gives
    std::string generated;      // what generating from `psf` gives
    std::int64_t functions = 0; // in `psf`
    std::int64_t keys = 0;      // in `ini`
};

void AddLoadCases(const BenchFiles& files);
void AddWriteCases(const BenchFiles& files);

// Make their documents themselves, in the disk folder.
void AddGrowthCases(const BenchFiles& files);
void AddHostileCase(const BenchFiles& files);
void AddCompletionCases(const BenchFiles& files);
void AddFindCases();

} // namespace tessaly
