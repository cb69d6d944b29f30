#pragma once

// A project in a temporary folder whose "电气" holds a tree of 9,910 codes: ten top
// codes 系统N, thirty WLN below each, thirty-two 回路N below each of those.
#include <QString>
#include <QTemporaryDir>

class CSysCodeData;

constexpr int kBenchTop = 10;
constexpr int kBenchMiddle = 30; // per top code
constexpr int kBenchLeaves = 32; // per middle code
constexpr int kBenchCodes = kBenchTop + kBenchTop * kBenchMiddle + kBenchTop * kBenchMiddle * kBenchLeaves;

// The codes of the benchmark tree, added below `root` with every attribute set.
void MakeBenchCodeTree(CSysCodeData& root);

class BenchProject
{
public:
    BenchProject();
    QString Spec() const { return QStringLiteral("电气"); }

private:
    QTemporaryDir m_dir;
};

// The project, made on first use and kept for the program's life.
BenchProject& TheBenchProject();
