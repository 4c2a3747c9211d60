#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <list>
#include <type_traits>

#include "printer/zpl_printer.h"
#include "tests/unit/printer/support/recording_printer.h"

namespace kelp_test {
namespace {

// As they are before anything of this program runs.
const KelpPrinter* const first_printer = sPrinter;
const unsigned long first_page_index = page_index;
const std::int32_t first_last_set = LastSet;

TEST(PrinterObject, NoPrinterIsPublishedAndTheCountersAreZeroAtTheStart) {
    EXPECT_EQ(first_printer, nullptr);
    EXPECT_EQ(first_page_index, 0UL);
    EXPECT_EQ(first_last_set, 0);
}

TEST(PrinterObject, OnlyAConcretePrinterCanBeMade) {
    EXPECT_TRUE(std::is_abstract_v<KelpPrinter>);
    EXPECT_FALSE(std::is_abstract_v<ZplPrinter>);
    EXPECT_TRUE((std::is_base_of_v<KelpPrinter, ZplPrinter>));
    EXPECT_TRUE(std::has_virtual_destructor_v<KelpPrinter>);
    EXPECT_EQ(sizeof(ZplPrinter), sizeof(KelpPrinter)) << "the derived class adds no field";
}

TEST(PrinterObject, ANewPrinterHasItsDefaults) {
    const ZplPrinter printer;
    EXPECT_EQ(printer.getBrightness(), 0);
    EXPECT_EQ(printer.getContrast(), 0);
    EXPECT_EQ(printer.getPrintSpeed(), 7);
    EXPECT_EQ(printer.getPrintDensity(), 8);
    EXPECT_EQ(printer.getHalftoneType(), DitherNone);
    EXPECT_FALSE(printer.isNegativePrint());
    EXPECT_FALSE(printer.isMirrorPrint());
    EXPECT_FALSE(printer.isRotate180Print());
    EXPECT_FALSE(printer.getUseTQDithering());
    EXPECT_EQ(printer.getRemoveBlankEdges(), 0);
    EXPECT_EQ(printer.getAntiWrinkle(), 0U);
    EXPECT_EQ(printer.getMaxMediaWidth(), 0U);
    EXPECT_EQ(printer.getVBarcodeOpt(), 0U);
    EXPECT_EQ(printer.GetPrintWidth(), 0UL);
    EXPECT_EQ(printer.getSkipRightPixels(), 0UL);
    EXPECT_EQ(printer.getUserData(), 0U);
    EXPECT_EQ(printer.getPageHeader(), nullptr);
    EXPECT_EQ(printer.processedImage(), nullptr);
}

TEST(PrinterObject, TheStreamListHoldsStandardOutputAlone) {
    ZplPrinter printer;
    EXPECT_EQ(printer.getOutputStreams(), std::list<std::FILE*>{stdout});
}

TEST(PrinterObject, TheStreamListIsHandedOutByReference) {
    ZplPrinter printer;
    printer.getOutputStreams().push_back(stderr);
    EXPECT_EQ(printer.getOutputStreams(), (std::list<std::FILE*>{stdout, stderr}));
}

TEST(PrinterParameters, BrightnessIsHeldToAHundredEitherWay) {
    ZplPrinter printer;
    EXPECT_EQ(printer.setBrightness(-150).getBrightness(), -100);
    EXPECT_EQ(printer.setBrightness(-101).getBrightness(), -100);
    EXPECT_EQ(printer.setBrightness(-100).getBrightness(), -100);
    EXPECT_EQ(printer.setBrightness(-99).getBrightness(), -99);
    EXPECT_EQ(printer.setBrightness(37).getBrightness(), 37);
    EXPECT_EQ(printer.setBrightness(100).getBrightness(), 100);
    EXPECT_EQ(printer.setBrightness(101).getBrightness(), 100);
    EXPECT_EQ(printer.setBrightness(std::numeric_limits<int>::max()).getBrightness(), 100);
    EXPECT_EQ(printer.setBrightness(std::numeric_limits<int>::min()).getBrightness(), -100);
    EXPECT_EQ(printer.getContrast(), 0);
}

TEST(PrinterParameters, ContrastIsHeldToAHundredEitherWay) {
    ZplPrinter printer;
    EXPECT_EQ(printer.setContrast(-101).getContrast(), -100);
    EXPECT_EQ(printer.setContrast(-100).getContrast(), -100);
    EXPECT_EQ(printer.setContrast(-1).getContrast(), -1);
    EXPECT_EQ(printer.setContrast(100).getContrast(), 100);
    EXPECT_EQ(printer.setContrast(101).getContrast(), 100);
    EXPECT_EQ(printer.getBrightness(), 0);
}

TEST(PrinterParameters, SpeedIsTheDecimalValueOfATextHeldToOneToFifteen) {
    ZplPrinter printer;
    EXPECT_EQ(printer.setPrintSpeed("0").getPrintSpeed(), 1);
    EXPECT_EQ(printer.setPrintSpeed("99").getPrintSpeed(), 15);
    EXPECT_EQ(printer.setPrintSpeed("abc").getPrintSpeed(), 1);
    EXPECT_EQ(printer.setPrintSpeed("").getPrintSpeed(), 1);
    EXPECT_EQ(printer.setPrintSpeed("-3").getPrintSpeed(), 1);
    EXPECT_EQ(printer.setPrintSpeed("1").getPrintSpeed(), 1);
    EXPECT_EQ(printer.setPrintSpeed("2").getPrintSpeed(), 2);
    EXPECT_EQ(printer.setPrintSpeed("14").getPrintSpeed(), 14);
    EXPECT_EQ(printer.setPrintSpeed("15").getPrintSpeed(), 15);
    EXPECT_EQ(printer.setPrintSpeed("16").getPrintSpeed(), 15);
    EXPECT_EQ(printer.setPrintSpeed(" 6 inches").getPrintSpeed(), 6);
    EXPECT_EQ(printer.setPrintSpeed("0x9").getPrintSpeed(), 1) << "no hexadecimal numbers";
}

TEST(PrinterParameters, DensityIsHeldToZeroToFifteen) {
    ZplPrinter printer;
    EXPECT_EQ(printer.setPrintDensity(-1).getPrintDensity(), 0);
    EXPECT_EQ(printer.setPrintDensity(0).getPrintDensity(), 0);
    EXPECT_EQ(printer.setPrintDensity(1).getPrintDensity(), 1);
    EXPECT_EQ(printer.setPrintDensity(15).getPrintDensity(), 15);
    EXPECT_EQ(printer.setPrintDensity(16).getPrintDensity(), 15);
}

TEST(PrinterParameters, EveryHalftoneIsStoredAsItIs) {
    ZplPrinter printer;
    for (int type = 0; type < 10; ++type) {
        const auto halftone = static_cast<DitherType>(type);
        EXPECT_EQ(printer.setHalftoneType(halftone).getHalftoneType(), halftone);
    }
}

TEST(PrinterParameters, EachFlagIsItsOwn) {
    ZplPrinter printer;
    const auto flags = [&printer] {
        return 8 * printer.isNegativePrint() + 4 * printer.isMirrorPrint() +
               2 * printer.isRotate180Print() + 1 * printer.getUseTQDithering();
    };
    printer.setNegativePrint(true);
    EXPECT_EQ(flags(), 8);
    printer.setMirrorPrint(true);
    EXPECT_EQ(flags(), 12);
    printer.setRotate180Print(true);
    EXPECT_EQ(flags(), 14);
    printer.setUseTQDithering(true);
    EXPECT_EQ(flags(), 15);
    printer.setNegativePrint(false);
    EXPECT_EQ(flags(), 7);
    printer.setMirrorPrint(false);
    EXPECT_EQ(flags(), 3);
    printer.setRotate180Print(false);
    EXPECT_EQ(flags(), 1);
    printer.setUseTQDithering(false);
    EXPECT_EQ(flags(), 0);
}

TEST(PrinterParameters, BlankEdgeFlagsAreStoredAsTheyAre) {
    ZplPrinter printer;
    for (const int flags : {0x02, 0x08, 0x0A, 0xF5, 0xFF, 0}) {
        const auto byte = static_cast<std::uint8_t>(flags);
        EXPECT_EQ(printer.setRemoveBlankEdges(byte).getRemoveBlankEdges(), byte);
    }
}

TEST(PrinterParameters, UnsignedValuesAreStoredAsTheyAre) {
    ZplPrinter printer;
    printer.setAntiWrinkle(0xFFFFFFFE).setMaxMediaWidth(0xFFFFFFFD).setVBarcodeOpt(0xFFFFFFFC);
    EXPECT_EQ(printer.getAntiWrinkle(), 0xFFFFFFFEU);
    EXPECT_EQ(printer.getMaxMediaWidth(), 0xFFFFFFFDU);
    EXPECT_EQ(printer.getVBarcodeOpt(), 0xFFFFFFFCU);
}

TEST(PrinterParameters, WideValuesKeepTheirUpperHalf) {
    ZplPrinter printer;
    printer.SetPrintWidth(0x123456789AUL)
        .setSkipRightPixels(0xFEDCBA987UL)
        .setUserData(std::uintptr_t{0xFFFFFFFFFFFFFFF0U});
    EXPECT_EQ(printer.GetPrintWidth(), 0x123456789AUL);
    EXPECT_EQ(printer.getSkipRightPixels(), 0xFEDCBA987UL);
    EXPECT_EQ(printer.getUserData(), std::uintptr_t{0xFFFFFFFFFFFFFFF0U});
}

TEST(PrinterParameters, ThePageHeaderIsBorrowed) {
    ZplPrinter printer;
    cups_page_header2_t header{};
    printer.setPageHeader(&header);
    header.NumCopies = 5;
    EXPECT_EQ(printer.getPageHeader(), &header);
    EXPECT_EQ(printer.getPageHeader()->NumCopies, 5U);
    EXPECT_EQ(printer.setPageHeader(nullptr).getPageHeader(), nullptr);
}

TEST(PrinterParameters, EverySetterReturnsThePrinterItself) {
    ZplPrinter printer;
    const cups_page_header2_t header{};
    const KelpPrinter* const itself = &printer;
    EXPECT_EQ(&printer.setBrightness(1), itself);
    EXPECT_EQ(&printer.setContrast(1), itself);
    EXPECT_EQ(&printer.setPrintSpeed("1"), itself);
    EXPECT_EQ(&printer.setPrintDensity(1), itself);
    EXPECT_EQ(&printer.setHalftoneType(DitherSierra), itself);
    EXPECT_EQ(&printer.setNegativePrint(true), itself);
    EXPECT_EQ(&printer.setMirrorPrint(true), itself);
    EXPECT_EQ(&printer.setRotate180Print(true), itself);
    EXPECT_EQ(&printer.setUseTQDithering(true), itself);
    EXPECT_EQ(&printer.setRemoveBlankEdges(1), itself);
    EXPECT_EQ(&printer.setAntiWrinkle(1), itself);
    EXPECT_EQ(&printer.setMaxMediaWidth(1), itself);
    EXPECT_EQ(&printer.setVBarcodeOpt(1), itself);
    EXPECT_EQ(&printer.SetPrintWidth(1), itself);
    EXPECT_EQ(&printer.setSkipRightPixels(1), itself);
    EXPECT_EQ(&printer.setUserData(1), itself);
    EXPECT_EQ(&printer.setPageHeader(&header), itself);
}

}  // namespace
}  // namespace kelp_test
