#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "printer/zpl_printer.h"
#include "tests/unit/printer/support/memory_stream.h"

namespace kelp_test {
namespace {

using namespace std::string_literals;

// A printer with 0 to 3 streams in place of standard output.
class PrinterOutput : public testing::TestWithParam<int> {
  protected:
    PrinterOutput() {
        printer.getOutputStreams().clear();
        for (int i = 0; i < GetParam(); ++i) {
            streams.push_back(std::make_unique<MemoryStream>());
            printer.getOutputStreams().push_back(streams.back()->file());
        }
    }

    // That every stream received this text.
    void expect_everywhere(const std::string& text) {
        for (std::size_t i = 0; i < streams.size(); ++i) {
            EXPECT_EQ(streams[i]->take(), text) << "stream " << i;
        }
    }

    ZplPrinter printer;
    std::vector<std::unique_ptr<MemoryStream>> streams;
};

INSTANTIATE_TEST_SUITE_P(Streams, PrinterOutput, testing::Values(0, 1, 2, 3),
                         testing::PrintToStringParamName());

TEST_P(PrinterOutput, BytesReachEveryStreamWithTheirZeros) {
    const std::string bytes = "a\0b\xFF\n"s;
    printer.printBytes(bytes.data(), bytes.size());
    expect_everywhere(bytes);
}

TEST_P(PrinterOutput, NoBytesWriteNothing) {
    printer.printBytes("abc", 0);
    expect_everywhere("");
}

TEST_P(PrinterOutput, ATextIsNotTakenAsAFormat) {
    printer.printStr("100%d %s\r\n");
    expect_everywhere("100%d %s\r\n");
    printer.printStr("");
    expect_everywhere("");
}

TEST_P(PrinterOutput, AByteIsTheLowEightBits) {
    printer.printByte('\n');
    printer.printByte(0x141);
    printer.printByte(-1);
    printer.printByte(0);
    expect_everywhere("\nA\xFF\0"s);
}

TEST_P(PrinterOutput, AFormatGivesEveryStreamTheSameText) {
    const int count = printer.printFormat("%s|%d|%.1f|%c|%s", "first", -42, 50.04, 'N', "last");
    expect_everywhere("first|-42|50.0|N|last");
    if (GetParam() > 0) {
        EXPECT_EQ(count, 21);
    }
}

TEST_P(PrinterOutput, AFormatHasNoLengthLimit) {
    const std::string text(200'000, 'x');
    const int count = printer.printFormat("<%s>", text.c_str());
    expect_everywhere("<" + text + ">");
    if (GetParam() > 0) {
        EXPECT_EQ(count, 200'002);
    }
}

TEST_P(PrinterOutput, WhatIsWrittenKeepsItsOrder) {
    printer.printStr("1");
    printer.printByte('2');
    printer.printFormat("%d", 3);
    printer.printBytes("4", 1);
    expect_everywhere("1234");
}

// A stream that notes its letter for every write it receives.
class NotingStream {
  public:
    NotingStream(std::string& notes, char letter) : notes_(notes), letter_(letter) {
        cookie_io_functions_t functions{};
        functions.write = [](void* self, const char*, std::size_t size) {
            auto* stream = static_cast<NotingStream*>(self);
            stream->notes_ += stream->letter_;
            return static_cast<ssize_t>(size);
        };
        file_ = fopencookie(this, "w", functions);
        std::setvbuf(file_, nullptr, _IONBF, 0);
    }
    ~NotingStream() { std::fclose(file_); }
    NotingStream(const NotingStream&) = delete;
    NotingStream& operator=(const NotingStream&) = delete;
    std::FILE* file() { return file_; }

  private:
    std::string& notes_;
    char letter_;
    std::FILE* file_;
};

TEST(PrinterOutputOrder, EveryOperationWritesToTheStreamsInTheOrderOfTheList) {
    std::string notes;
    NotingStream a(notes, 'a');
    NotingStream b(notes, 'b');
    NotingStream c(notes, 'c');
    ZplPrinter printer;
    printer.getOutputStreams() = {b.file(), a.file(), c.file()};

    // An unbuffered stream may write one print in parts: only the order of the streams counts.
    const auto order = [&notes] {
        std::string streams = notes;
        notes.clear();
        streams.erase(std::unique(streams.begin(), streams.end()), streams.end());
        return streams;
    };
    printer.printBytes("xyz", 3);
    EXPECT_EQ(order(), "bac");
    printer.printStr("xyz");
    EXPECT_EQ(order(), "bac");
    printer.printByte('x');
    EXPECT_EQ(order(), "bac");
    printer.printFormat("%d %s", 12, "xyz");
    EXPECT_EQ(order(), "bac");
}

TEST(PrinterOutputOrder, TheCountOfAFormatIsThatOfTheLastStream) {
    MemoryStream good;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> bad(std::fopen("/dev/null", "r"),
                                                              &std::fclose);
    ASSERT_NE(bad, nullptr);
    ZplPrinter printer;
    // A stream that is open for reading alone refuses the print.
    printer.getOutputStreams() = {bad.get(), good.file()};
    EXPECT_EQ(printer.printFormat("%s", "abc"), 3);
    printer.getOutputStreams() = {good.file(), bad.get()};
    EXPECT_LT(printer.printFormat("%s", "abc"), 0);
    EXPECT_EQ(good.take(), "abcabc");
}

TEST(PrinterOutputOrder, TheCountOfAFormatWithoutStreamsIsZero) {
    ZplPrinter printer;
    printer.getOutputStreams().clear();
    EXPECT_EQ(printer.printFormat("%s", "abc"), 0);
}

TEST(PrinterOutputOrder, NothingIsFlushed) {
    std::string notes;
    NotingStream stream(notes, 'a');
    std::array<char, 256> buffer;
    std::setvbuf(stream.file(), buffer.data(), _IOFBF, buffer.size());
    ZplPrinter printer;
    printer.getOutputStreams() = {stream.file()};
    printer.printStr("line\n");
    printer.printByte('\n');
    printer.printFormat("%d\n", 1);
    printer.printBytes("\n", 1);
    EXPECT_EQ(notes, "");
    std::fflush(stream.file());
    EXPECT_EQ(notes, "a");
}

TEST(PrinterOutputOrder, StreamsAreLeftOpenWhenThePrinterGoes) {
    MemoryStream stream;
    {
        ZplPrinter printer;
        printer.getOutputStreams() = {stream.file()};
        printer.printStr("printed");
    }
    std::fputs(", then more", stream.file());
    EXPECT_EQ(stream.take(), "printed, then more");
}

TEST(CopyRight, IsUppercaseTwoDigitHexBehindItsMark) {
    const std::string banner = KelpPrinter::getCopyRight();
    ASSERT_EQ(banner.substr(0, 4), "MFT:");
    const std::string bytes = banner.substr(4);
    ASSERT_EQ(bytes.size() % 3, 2U) << "two digits a byte, one blank between two bytes";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char* const allowed = i % 3 == 2 ? " " : "0123456789ABCDEF";
        EXPECT_NE(std::string(allowed).find(bytes[i]), std::string::npos) << banner;
    }
}

TEST(CopyRight, ReadsAsATextThatNamesKelp) {
    const std::string banner = KelpPrinter::getCopyRight();
    std::string text;
    for (std::size_t i = 4; i < banner.size(); i += 3) {
        text += static_cast<char>(std::stoi(banner.substr(i, 2), nullptr, 16));
    }
    EXPECT_NE(text.find("Kelp"), std::string::npos) << text;
    for (const char c : text) {
        EXPECT_TRUE(c >= ' ' && c <= '~') << text;
    }
}

TEST(CopyRight, IsAConstantText) {
    const char* const first = KelpPrinter::getCopyRight();
    EXPECT_EQ(KelpPrinter::getCopyRight(), first);
}

}  // namespace
}  // namespace kelp_test
