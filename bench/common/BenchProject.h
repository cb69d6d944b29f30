#pragma once

// A project in a temporary folder with the benchmark specialties: "电气" holds a tree
// of about 10,000 codes and "弱电" one of about 50,000 (both show the pipeline
// columns). Each tree has ten top codes 系统N, thirty WLN below each, and below each
// of those as many 回路N as make up the size: thirty-two for 10,000 (9,910 codes),
// 166 for 50,000 (50,110 codes). The current floor F0 offers eight horizontal
// laying modes, the project four vertical ones, as a drafter's project does.
#include <QString>
#include <QTemporaryDir>

#include <set>

class CSysCodeData;

constexpr int kBenchTop = 10;
constexpr int kBenchMiddle = 30; // per top code
// The sizes the benchmarks run at, given to them as their first argument.
constexpr int kBenchSmall = 10000;
constexpr int kBenchLarge = 50000;

// Leaves per middle code, and the number of codes, of the tree made for a size.
int BenchLeaves(int size);
int BenchCodeCount(int size);
constexpr int kBenchCodes = kBenchTop + kBenchTop * kBenchMiddle + kBenchTop * kBenchMiddle * 32;

// The codes of the benchmark tree of a size, added below `root` with every attribute set.
void MakeBenchCodeTree(CSysCodeData& root, int size = kBenchSmall);

// The specialty the tree of a size is stored in.
QString BenchSpec(int size);
// The statements giving a new project the benchmark specialties, floor F0 as the
// current floor and the laying modes.
QString BenchProjectSql();
// Stores the tree of `size` in its specialty (BenchSpec) of the open project.
void StoreBenchSpec(int size);

class BenchProject
{
public:
    BenchProject();
    // The specialty holding the tree of `size`, stored on first use.
    QString Spec(int size = kBenchSmall);

private:
    QTemporaryDir m_dir;
    std::set<int> m_stored;
};

// The project, made on first use and kept for the program's life.
BenchProject& TheBenchProject();
