// Replaces libFuzzer in ordinary builds: runs a fuzz target on each file of its corpus and on a fixed sequence of
// changed inputs. On a slow machine the sequence is shortened to limit the time.
//
//   fuzz_name CORPUS [LAST]
//
// LAST is a file to which each input is written before it is run: after a crash it has the input that caused it.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int *argc, char ***argv);

namespace {
using Input = std::vector<uint8_t>;

constexpr int ChangedInputs = 2000;
constexpr size_t MaximumSize = 65536;
constexpr std::chrono::seconds TimeLimit(2);

Input read(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The corpus in the order of the file names.
std::vector<Input> readCorpus(const char *directory)
{
    std::vector<std::filesystem::path> paths;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(directory, error)) {
        if (entry.is_regular_file())
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<Input> corpus;
    for (const auto &path : paths)
        corpus.push_back(read(path));
    return corpus;
}

/// Changes inputs pseudo-randomly, with the same result in each run on each machine.
class Mutator
{
public:
    explicit Mutator(const std::vector<Input> &corpus) : m_corpus(corpus) {}

    Input next()
    {
        Input input = anyOfCorpus();
        for (size_t changes = 1 + below(4); changes > 0; --changes)
            change(&input);
        if (input.size() > MaximumSize)
            input.resize(MaximumSize);
        return input;
    }

private:
    /// A number below @p limit, or 0. The distributions of the standard library differ between implementations.
    size_t below(size_t limit) { return limit ? m_random() % limit : 0; }
    const Input &anyOfCorpus() { return m_corpus[below(m_corpus.size())]; }

    void change(Input *input)
    {
        const size_t from = below(input->size());
        const size_t length = below(std::min<size_t>(input->size() - from, 64)) + (input->empty() ? 0 : 1);
        const auto begin = input->begin() + std::ptrdiff_t(from);
        const auto end = begin + std::ptrdiff_t(length);
        switch (below(5)) {
        case 0: // change a byte
            if (!input->empty())
                *begin = uint8_t(m_random());
            break;
        case 1: // remove bytes
            input->erase(begin, end);
            break;
        case 2: // repeat bytes
            repeat(input, Input(begin, end), from);
            break;
        case 3: // insert bytes
            insertBytes(input, from);
            break;
        default: // append the end of another input
            splice(input, from);
        }
    }

    void repeat(Input *input, const Input &piece, size_t at)
    {
        for (size_t times = 1 + below(20); times > 0; --times)
            input->insert(input->begin() + std::ptrdiff_t(at), piece.begin(), piece.end());
    }

    void insertBytes(Input *input, size_t at)
    {
        for (size_t count = 1 + below(8); count > 0; --count)
            input->insert(input->begin() + std::ptrdiff_t(at), uint8_t(m_random()));
    }

    void splice(Input *input, size_t at)
    {
        const Input &other = anyOfCorpus();
        input->resize(at);
        input->insert(input->end(), other.begin() + std::ptrdiff_t(below(other.size())), other.end());
    }

    const std::vector<Input> &m_corpus;
    std::mt19937 m_random{1};
};

void run(const Input &input, const char *last)
{
    if (last) {
        std::ofstream file(last, std::ios::binary);
        file.write(reinterpret_cast<const char *>(input.data()), std::streamsize(input.size()));
    }
    LLVMFuzzerTestOneInput(input.data(), input.size());
}
} // namespace

int main(int argc, char **argv)
{
    const std::vector<Input> corpus = readCorpus(argc > 1 ? argv[1] : ".");
    if (argc < 2 || corpus.empty()) {
        std::fprintf(stderr, "usage: %s CORPUS [LAST], with a directory of inputs\n", argv[0]);
        return 1;
    }
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    const char *last = argc > 2 ? argv[2] : nullptr;
    run({}, last);
    for (const Input &input : corpus)
        run(input, last);
    Mutator mutator(corpus);
    const auto start = std::chrono::steady_clock::now();
    int changed = 0;
    for (; changed < ChangedInputs && std::chrono::steady_clock::now() - start < TimeLimit; ++changed)
        run(mutator.next(), last);
    std::printf("%zu files, %d changed inputs\n", corpus.size(), changed);
    return 0;
}
