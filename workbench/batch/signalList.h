#pragma once

#include <string>
#include <vector>

// A file of a batch.
struct BatchItem {
    std::string signal;  // path of the file
    std::string name;    // of its result: path below the folder of results, with / between folders
};

// Which files a batch takes.
struct SignalSelection {
    std::vector<std::string> words;  // files, folders and patterns
    bool recursive = false;          // folders below those too
    std::string into;                // folder of the results, which is not searched
    std::string ending;              // of the results, ".wav"; empty: each as its signal's
};

// The files, in the order of their names. A name is the path below the folder that was named, or
// that a pattern has before its first wildcard; of a file that was named it is the last part. Of a
// folder all files are taken whose ending is that of a format; hidden ones are not.
//   Failure   a word that stands for no file, a folder that cannot be read, a name that is not
//             printable UTF-8 or gives no format, two files whose results have one name, a result
//             that would replace one of the files.
std::vector<BatchItem> listSignals(const SignalSelection& selection);

// The kernel of a file: a pattern with {name}, which stands for the name of the file without folder
// and ending, or {path}, which stands for its path below the folder of results without ending.
bool isKernelPattern(const std::string& kernel);
std::string kernelOf(const std::string& kernel, const BatchItem& item);
