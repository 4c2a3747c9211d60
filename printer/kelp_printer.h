#ifndef KELP_PRINTER_KELP_PRINTER_H
#define KELP_PRINTER_KELP_PRINTER_H

#include <cups/raster.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <list>

#include "filter/halftone_type.h"
#include "image/cx_image.h"

/// The printer: the parameters of the page being printed, the streams that every printer byte goes
/// to, and the road of a page from grey raster to dots. A concrete printer adds the encoding of a
/// page in its language. One object serves a whole run.
class KelpPrinter {
  public:
    KelpPrinter();
    virtual ~KelpPrinter() = default;

    /// Prints one processed page.
    /// @param pixels one byte per dot, any value but 0 prints; may be overwritten
    virtual void doPrintImage(const unsigned char* pixels, unsigned long bytesPerLine,
                              unsigned long height, unsigned long width) = 0;

    KelpPrinter(const KelpPrinter&) = delete;
    KelpPrinter& operator=(const KelpPrinter&) = delete;

    // --- Parameters (kelp_printer.cpp). Setters clamp without a word. ---

    KelpPrinter& setBrightness(int percent);  ///< held to -100 ... 100
    int getBrightness() const { return brightness_; }
    KelpPrinter& setContrast(int percent);  ///< held to -100 ... 100
    int getContrast() const { return contrast_; }
    KelpPrinter& setPrintSpeed(const char* text);  ///< a decimal number, held to 1 ... 15
    int getPrintSpeed() const { return printSpeed_; }
    KelpPrinter& setPrintDensity(int density);  ///< held to 0 ... 15
    int getPrintDensity() const { return printDensity_; }
    KelpPrinter& setHalftoneType(DitherType type);
    DitherType getHalftoneType() const { return halftoneType_; }
    KelpPrinter& setNegativePrint(bool on);
    bool isNegativePrint() const { return negativePrint_; }
    KelpPrinter& setMirrorPrint(bool on);
    bool isMirrorPrint() const { return mirrorPrint_; }
    KelpPrinter& setRotate180Print(bool on);
    bool isRotate180Print() const { return rotate180Print_; }
    /// Whether the tattoo route runs; PageProcess sets it anew from the halftone on every page.
    KelpPrinter& setUseTQDithering(bool on);
    bool getUseTQDithering() const { return useTQDithering_; }
    /// Bit 0x02 asks for the blank rows at the top to be measured, 0x08 for those at the bottom.
    KelpPrinter& setRemoveBlankEdges(std::uint8_t flags);
    std::uint8_t getRemoveBlankEdges() const { return removeBlankEdges_; }
    /// Width in millimetres of the anti-wrinkle border's left and right bars; 0 for no border.
    KelpPrinter& setAntiWrinkle(std::uint32_t level);
    std::uint32_t getAntiWrinkle() const { return antiWrinkle_; }
    KelpPrinter& setMaxMediaWidth(std::uint32_t dots);
    std::uint32_t getMaxMediaWidth() const { return maxMediaWidth_; }
    KelpPrinter& setVBarcodeOpt(std::uint32_t value);
    std::uint32_t getVBarcodeOpt() const { return vBarcodeOpt_; }
    KelpPrinter& SetPrintWidth(unsigned long dots);
    unsigned long GetPrintWidth() const { return printWidth_; }
    /// Dots to leave out at the right edge of every row.
    KelpPrinter& setSkipRightPixels(unsigned long dots);
    unsigned long getSkipRightPixels() const { return skipRightPixels_; }
    KelpPrinter& setUserData(std::uintptr_t value);
    std::uintptr_t getUserData() const { return userData_; }
    /// The raster header of the page; borrowed, it must outlive the printing of the page.
    KelpPrinter& setPageHeader(const cups_page_header2_t* header);
    const cups_page_header2_t* getPageHeader() const { return pageHdr_; }

    // --- Output (printer_output.cpp). Every operation writes to each stream in turn, checks no
    // errors and flushes nothing. ---

    /// The streams, standard output first. Borrowed: never closed here. Null is not allowed.
    std::list<std::FILE*>& getOutputStreams() { return outputStreams_; }
    void printBytes(const void* buffer, std::size_t size);
    void printStr(const char* text);
    void printByte(int byte);  ///< the low 8 bits
    /// @return the character count of the last stream's print; 0 without streams
    [[gnu::format(printf, 2, 3)]] int printFormat(const char* format, ...);

    /// An identification banner in hexadecimal; a constant text, never printed by the filter.
    static const char* getCopyRight();

    // --- A page's road ---

    /// Prints one page of 8-bit grey raster: measures blank rows, writes the snapshots, processes
    /// and prints it (page_pipeline.cpp). Throws std::bad_alloc.
    /// @param pixels height rows of bytesPerLine bytes, top to bottom; width of them are pixels
    void printImage(const unsigned char* pixels, unsigned long bytesPerLine, unsigned long height,
                    unsigned long width);

    /// Turns a page of grey raster into dots, held in the printer (page_process.cpp). Throws
    /// std::bad_alloc.
    /// @param type method number of the default route; which route runs is decided by the halftone
    ///   set with setHalftoneType
    /// @param out processedSize bytes, zeroed by the caller: scratch on the way, at the end the
    ///   page with printed dots as 0xFF and rows GetEffWidth() of the result apart
    /// @return height times the result's row bytes; 0 when the page could not be loaded
    int PageProcess(DitherType type, const unsigned char* pixels, int bytesPerLine, int width,
                    int height, unsigned char* out);

    /// Bytes that PageProcess needs in its output buffer for such a page (page_pipeline.cpp).
    std::size_t processedSize(unsigned long bytesPerLine, unsigned long height,
                              unsigned long width) const;

    /// Copies indices of an image, row y to out + y * stride.
    static void copyPixels(const CxImage& img, unsigned char* out, int width, int height,
                           int stride);
    /// As copyPixels, with index 1 as 0xFF, and every byte inverted for a negative print.
    void copyProcessedPixels(const CxImage* img, unsigned char* out, int width, int height,
                             int stride) const;

    /// Frames an 8-bit image with the border that holds a transfer sheet flat (anti_wrinkle.cpp).
    /// The canvas is that of the page header's page size; a smaller image is centred on it.
    void EnableAntiWrink(CxImage& img) const;

    /// Writes an image as a BMP file named by snapshotTemplate, local time and page_index; a file
    /// that cannot be opened is reported on standard error (snapshot.cpp).
    /// @param data height rows of bytesPerLine bytes, one byte per pixel
    /// @param bitsPerPixel 8: grey, top to bottom, rows of width bytes without padding, whatever
    ///   bytesPerLine is. Any other: bytesPerLine pixels a row, 1 bit each, set for 0, bottom up.
    void saveImage(const unsigned char* data, unsigned long bytesPerLine, unsigned long height,
                   unsigned long width, unsigned short bitsPerPixel) const;
    /// Names the snapshots that follow: a printf format for six int of local time and a long.
    void setSnapshotTemplate(const char* pattern);
    /// Whether printImage writes its two snapshots of a page; it does unless told otherwise.
    KelpPrinter& setSnapshots(bool on);

    /// Packs a page of one byte per dot to one bit per dot, in place (mono_packing.h).
    /// @param data height rows of width bytes
    /// @return bytes written
    int GrayToMono(int width, int height, unsigned char* data) const;

    /// The processed image, one of this printer's own; null before the first page.
    const CxImage* processedImage() const { return pimage_; }

  protected:
    /// Dots per inch, for the border; nothing sets it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): each printer knows its own
    std::int32_t resolution_ = 300;

  private:
    void saveOrigin(const unsigned char* pixels, unsigned long bytesPerLine, unsigned long height,
                    unsigned long width);
    void saveAndPrintProcessed();
    // The parts of PageProcess. (page_process.cpp)
    bool loadPage(const unsigned char* pixels, int bytesPerLine, int width, int height);
    bool makeStencil(int bytesPerLine, int width, int height, unsigned char* out, bool fillsOut);
    /// As PageProcess; leaves the dots out of `out` unless fillsOut.
    int processPage(DitherType type, const unsigned char* pixels, int bytesPerLine, int width,
                    int height, unsigned char* out, bool fillsOut);

    CxImage cximage_;
    CxImage tattooImage_;
    CxImage* pimage_ = nullptr;
    char snapshotTemplate_[1024] = {};
    std::list<std::FILE*> outputStreams_;
    const cups_page_header2_t* pageHdr_ = nullptr;
    std::uint32_t maxMediaWidth_ = 0;
    unsigned long printWidth_ = 0;
    std::int32_t brightness_ = 0;
    std::uint32_t vBarcodeOpt_ = 0;
    std::int32_t contrast_ = 0;
    std::int32_t printSpeed_ = 7;
    std::int32_t printDensity_ = 8;
    DitherType halftoneType_ = DitherNone;
    bool negativePrint_ = false;
    bool mirrorPrint_ = false;
    bool rotate180Print_ = false;
    std::uint32_t antiWrinkle_ = 0;
    bool useTQDithering_ = false;
    bool snapshots_ = true;
    std::uint8_t removeBlankEdges_ = 0;
    unsigned long skipRightPixels_ = 0;
    std::uintptr_t userData_ = 0;
};

/// The printer of the run, through which the job-setup commands print; set by the filter's entry,
/// null outside a run.
extern KelpPrinter* sPrinter;

/// Number of the next snapshot of this process.
extern unsigned long page_index;

#endif
