// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// How fast frames are found in the bytes of a USB cable. Prints one object of JSON.

#include "device/usb/UsbFrame.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <random>

#include <malloc.h>

using namespace tallyforge;
using namespace Qt::StringLiterals;

namespace {

long long allocated = 0; // bytes ever asked for

} // namespace

// Qt and the standard library both get their memory here. The names are glibc's.
extern "C" {
void *__libc_malloc(size_t size);               // NOLINT
void *__libc_realloc(void *block, size_t size); // NOLINT

void *malloc(size_t size) // NOLINT
{
    allocated += static_cast<long long>(size);
    return __libc_malloc(size);
}

void *realloc(void *block, size_t size) // NOLINT
{
    allocated += static_cast<long long>(size);
    return __libc_realloc(block, size);
}
}

namespace {

constexpr qsizetype megabyte = 1000000;
constexpr qsizetype readSize = 4096; // as SerialPort reads
constexpr int repetitions = 11;

struct Traffic
{
    QString name;
    QByteArray bytes;
    qsizetype frames = 0; // that must be found in the bytes
    qsizetype piece = readSize;
};

// The sizes that each kind of payload has on the line of a device in use.
Traffic cleanTraffic()
{
    struct Kind
    {
        UsbFrame::Type type;
        int smallest, largest;
    };
    constexpr std::array kinds{
        Kind{UsbFrame::Envelope, 150, 1200}, Kind{UsbFrame::Envelope, 150, 1200},
        Kind{UsbFrame::Pipe, 20, 512},       Kind{UsbFrame::Stream, 2, 514},
        Kind{UsbFrame::Ctrl, 12, 300},       Kind{UsbFrame::Admin, 60, 2048},
    };
    std::mt19937 random(1);
    Traffic traffic{u"clean"_s, {}};
    while (traffic.bytes.size() < 8 * megabyte) {
        const Kind &kind = kinds[random() % kinds.size()];
        QByteArray payload(std::uniform_int_distribution(kind.smallest, kind.largest)(random), 0);
        std::generate(payload.begin(), payload.end(),
                      [&random] { return static_cast<char>(' ' + random() % 95); });
        traffic.bytes += buildFrame(kind.type, payload);
        ++traffic.frames;
    }
    return traffic;
}

// Every byte value but the one that all syncs begin with.
Traffic noise()
{
    std::mt19937 random(2);
    QByteArray bytes(8 * megabyte, 0);
    std::generate(bytes.begin(), bytes.end(),
                  [&random] { return static_cast<char>(1 + random() % 255); });
    return {u"noise"_s, bytes};
}

QByteArrayList piecesOf(const QByteArray &bytes, qsizetype size)
{
    QByteArrayList pieces;
    pieces.reserve(bytes.size() / size + 1);
    for (qsizetype at = 0; at < bytes.size(); at += size) {
        pieces.append(bytes.mid(at, size));
    }
    return pieces;
}

// Of this program's time on the processor, so that other programs don't count.
double secondsFor(const Traffic &traffic, int times)
{
    const QByteArrayList pieces = piecesOf(traffic.bytes.repeated(times), traffic.piece);
    UsbFrameParser parser;
    qsizetype found = 0;
    const std::clock_t begin = std::clock();
    for (const QByteArray &piece : pieces) {
        found += parser.feed(piece).size();
    }
    const double taken = double(std::clock() - begin) / CLOCKS_PER_SEC;
    if (found != traffic.frames * times) {
        qFatal("%lld frames found in %s", static_cast<long long>(found), qPrintable(traffic.name));
    }
    return taken;
}

// Megabytes a second, and how many times as long twice the bytes take at best.
QJsonObject measured(const Traffic &traffic)
{
    QJsonArray speeds;
    double once = 1e9;
    double twice = 1e9;
    for (int i = 0; i < repetitions; ++i) {
        const double seconds = secondsFor(traffic, 1);
        speeds.append(double(traffic.bytes.size()) / double(megabyte) / seconds);
        once = std::min(once, seconds);
        twice = std::min(twice, secondsFor(traffic, 2));
    }
    return {{u"speed"_s, speeds}, {u"twice"_s, twice / once}};
}

double bytesAllocatedPerFrame(const Traffic &traffic)
{
    const QByteArrayList pieces = piecesOf(traffic.bytes, traffic.piece);
    UsbFrameParser parser;
    const long long before = allocated;
    for (const QByteArray &piece : pieces) {
        (void)parser.feed(piece);
    }
    return double(allocated - before) / double(traffic.frames);
}

double mostBytesHeld(const Traffic &traffic)
{
    const QByteArrayList pieces = piecesOf(traffic.bytes, traffic.piece);
    UsbFrameParser parser;
    const size_t before = mallinfo2().uordblks;
    size_t most = before;
    for (const QByteArray &piece : pieces) {
        (void)parser.feed(piece);
        most = std::max(most, mallinfo2().uordblks);
    }
    return double(most - before);
}

} // namespace

int main()
{
    const Traffic clean = cleanTraffic();
    // 00 'T' 'F', a type, and a length of 2048: each costs a sum over 2048 bytes, and none can
    // follow another one closer.
    const QByteArray falseSyncs = QByteArray::fromHex("005446010008").repeated(megabyte / 2 / 6);
    const std::array all{
        clean,
        noise(),
        Traffic{u"zeros"_s, QByteArray(8 * megabyte, '\0')},
        Traffic{u"false_syncs"_s, falseSyncs},
        Traffic{u"single_bytes"_s, falseSyncs, 0, 1},
        Traffic{u"at_once"_s, falseSyncs, 0, 2 * megabyte},
    };
    QJsonObject result{
        {u"frame_size"_s, double(clean.bytes.size()) / double(clean.frames)},
        {u"allocated"_s, bytesAllocatedPerFrame(clean)},
        {u"held"_s, std::max({mostBytesHeld(clean), mostBytesHeld(all[3]), mostBytesHeld(all[4])})},
    };
    for (const Traffic &traffic : all) {
        result.insert(traffic.name, measured(traffic));
    }
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
