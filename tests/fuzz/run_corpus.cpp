/// The fuzz target without a fuzzer: every file of the corpus, then mutations of them, the same ones
/// in every run.
///
///     fuzz_extraction CORPUS [MUTATIONS]

#include <QDir>
#include <QFile>

#include <cstdio>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace
{

std::vector<QByteArray> ReadCorpus(const QString &folder)
{
    std::vector<QByteArray> corpus;
    for (const QFileInfo &info : QDir(folder).entryInfoList(QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        if (file.open(QIODevice::ReadOnly))
            corpus.push_back(file.readAll());
    }
    return corpus;
}

class Mutator
{
public:
    explicit Mutator(const std::vector<QByteArray> &corpus) : m_corpus(corpus) {}

    QByteArray Next()
    {
        QByteArray bytes = Pick();
        for (qsizetype steps = 1 + Below(6); steps > 0; --steps)
            Change(bytes);
        return bytes;
    }

private:
    /// The library's distributions differ from one compiler to the next.
    qsizetype Below(qsizetype bound)
    {
        return bound > 0 ? qsizetype(m_random() % quint64(bound)) : 0;
    }
    const QByteArray &Pick() { return m_corpus[size_t(Below(qsizetype(m_corpus.size())))]; }

    void Change(QByteArray &bytes)
    {
        static const QByteArrayList words = {
            "\n",   "\r",       " ",        ",",        ".",       "/",      "<p>",
            "</p>", "N/A",      "0",        "-1",       "32767",   "-32768", QByteArray(1, '\0'),
            "\xff", "\xd8\x3c", "\xc4\xb0", "\xc4\xb1", "\xf0\x9f"};
        const qsizetype at = Below(bytes.size() + 1);
        const qsizetype count = Below(std::min<qsizetype>(bytes.size() - at, 40) + 1);
        switch (Below(6)) {
        case 0:
            if (at < bytes.size())
                bytes[at] = char(Below(256));
            break;
        case 1:
            bytes.remove(at, count);
            break;
        case 2:
            bytes.insert(at, bytes.mid(Below(bytes.size()), count));
            break;
        case 3:
            bytes.insert(at, words[Below(words.size())]);
            break;
        case 4: { // the rest of another file
            const QByteArray &other = Pick();
            bytes = bytes.left(at) + other.mid(Below(other.size()));
            break;
        }
        case 5: // to and beyond the positions of 16 bits
            bytes.insert(at, QByteArray(Below(8) == 0 ? 32700 + Below(80) : Below(300), ' '));
            break;
        }
    }

    const std::vector<QByteArray> &m_corpus;
    std::mt19937_64 m_random{20261121};
};

void Run(const QByteArray &bytes)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                           size_t(bytes.size()));
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<QByteArray> corpus =
        ReadCorpus(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
    if (corpus.empty()) {
        std::fprintf(stderr, "usage: %s CORPUS [MUTATIONS]\n", argv[0]);
        return 1;
    }
    for (const QByteArray &bytes : corpus)
        Run(bytes);
    Mutator mutator(corpus);
    const int mutations = argc > 2 ? std::atoi(argv[2]) : 5000;
    for (int i = 0; i < mutations; ++i)
        Run(mutator.Next());
    std::printf("%zu files and %d mutations\n", corpus.size(), mutations);
    return 0;
}
