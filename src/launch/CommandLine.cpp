// CommandLine: splitting a command line into words, finding its program and its working folder.
#include "launch/CommandLine.h"

#include "platform/Files.h"

#include <string_view>

namespace ombrel::launch {

namespace {

constexpr const char* kBlanks = " \t";

std::string joinPath(const std::string& folder, const std::string& name)
{
    if (folder.empty())
        return name;
    if (folder.back() == '/')
        return folder + name;
    return folder + '/' + name;
}

bool endsWithExe(const std::string& name)
{
    if (name.size() < 4)
        return false;
    const std::string_view tail(name.data() + name.size() - 4, 4);
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return tail[0] == '.' && lower(tail[1]) == 'e' && lower(tail[2]) == 'x' && lower(tail[3]) == 'e';
}

// One spelling of the program's name, looked for where a name of its kind is looked for.
std::optional<std::string> locate(const std::string& name, const std::string& programFolder,
    const std::string& pathEnv, const FindProgram& find)
{
    if (name.find('/') != std::string::npos)
        return find(name.front() == '/' ? name : joinPath(programFolder, name));
    if (auto found = find(joinPath(programFolder, name)))
        return found;
    std::size_t from = 0;
    while (from <= pathEnv.size()) {
        std::size_t colon = pathEnv.find(':', from);
        if (colon == std::string::npos)
            colon = pathEnv.size();
        // NOTE: an empty entry means the current folder to a shell; the current folder of a front end is
        // nothing the owner chose, so it is skipped.
        if (colon > from) {
            if (auto found = find(joinPath(pathEnv.substr(from, colon - from), name)))
                return found;
        }
        from = colon + 1;
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> splitCommandLine(const std::string& line)
{
    std::vector<std::string> words;
    std::string word;
    bool inWord = false; // an empty pair of quotes starts a word too
    bool quoted = false;
    for (const char c : line) {
        if (c == '"') {
            quoted = !quoted;
            inWord = true;
        } else if (quoted) {
            word += c;
        } else if (c == ' ' || c == '\t') {
            if (inWord) {
                words.push_back(std::move(word));
                word.clear();
                inWord = false;
            }
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words.push_back(std::move(word));
    return words;
}

std::optional<std::string> resolveProgram(const std::string& word, const std::string& programFolder,
    const std::string& pathEnv, const FindProgram& find)
{
    std::string name = platform::toNativePath(word);
    if (name.empty() || name.back() == '/')
        return std::nullopt;
    if (auto found = locate(name, programFolder, pathEnv, find))
        return found;
    if (!endsWithExe(name))
        return std::nullopt;
    name.resize(name.size() - 4);
    if (name.empty() || name.back() == '/')
        return std::nullopt;
    return locate(name, programFolder, pathEnv, find);
}

std::optional<std::vector<std::string>> resolveCommandLine(const std::string& line,
    const std::string& programFolder, const std::string& pathEnv, const FindProgram& find)
{
    std::vector<std::string> words = splitCommandLine(line);
    if (words.empty())
        return std::nullopt;
    if (auto program = resolveProgram(words.front(), programFolder, pathEnv, find)) {
        words.front() = *program;
        return words;
    }
    // The first word grows by one written word at a time, blanks kept as written, and stops at a double
    // quote: text in quotes was grouped on purpose.
    const std::size_t start = line.find_first_not_of(kBlanks);
    std::size_t end = line.find_first_of(kBlanks, start);
    while (end != std::string::npos) {
        const std::size_t next = line.find_first_not_of(kBlanks, end);
        if (next == std::string::npos)
            break;
        end = line.find_first_of(kBlanks, next);
        const std::string candidate = line.substr(start, end == std::string::npos ? end : end - start);
        if (candidate.find('"') != std::string::npos)
            break;
        if (auto program = resolveProgram(candidate, programFolder, pathEnv, find)) {
            std::vector<std::string> argv { *program };
            if (end != std::string::npos) {
                for (auto& word : splitCommandLine(line.substr(end)))
                    argv.push_back(std::move(word));
            }
            return argv;
        }
    }
    return std::nullopt;
}

std::string workingFolder(const std::string& dir, const std::string& programFolder)
{
    const std::string native = platform::toNativePath(dir);
    if (native.empty())
        return programFolder;
    if (native.front() == '/')
        return native;
    return joinPath(programFolder, native);
}

} // namespace ombrel::launch
