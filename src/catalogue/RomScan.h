// RomScan: the scan that finds which games of the master list are present on each path, and writes
// one list file per path from what it finds (the REFRESH command, and the first run of a cabinet).
#pragma once

#include "catalogue/FolderListing.h"
#include "catalogue/ListFiles.h"
#include "catalogue/Navigation.h"
#include "runtime/Form.h"
#include "runtime/controls/ControlArray.h"
#include "runtime/controls/Label.h"
#include "runtime/controls/ListBox.h"

#include <map>
#include <string>

namespace ombrel::catalogue {

// The browser's controls that the scan writes to.
struct ScanControls
{
    runtime::Form& Main; // its form stack paints the captions and records the files written
    runtime::ListBox& List1;
    runtime::Label& lblPath;
    runtime::ControlArray<runtime::Label>& ll;
};

// The message in the strip's middle row while a scan runs.
inline constexpr const char* kScanningMessage = "Scanning Computer for Roms.... Please be Patient";

// The text of a list file: for each row 1 to 4000 with a description, "rom","description" and CR LF.
// A row without a description is left out; rows past 4000 never reach the file.
std::string listFileText(const Table& scanList);

// The scan does not read folders game by game: it walks the master list, so a ROM file that the list
// does not name is never listed and every list keeps the master list's order. Whether a game's file is
// there is answered from one listing per folder, made when the scan first needs it and dropped when
// the scan ends, with the same answers a look-up of each file on disk would give.
class RomScan
{
public:
    RomScan(CatalogueContext context, Navigator& nav, ScanControls controls);
    RomScan(const RomScan&) = delete;
    RomScan& operator=(const RomScan&) = delete;

    // The whole command: scan every list, read the new files, and show the first list from the top.
    void refreshAll();
    // Empties the games of every list and the scan's working table; the master list and the Extras stay.
    void DeleteList();
    // Scans every list that the settings switch on, with the message and the folder on screen.
    void CheckForFiles();
    // Scans run.scanDir for the games of the master list and writes listFile from the finds.
    void makeListFiles();
    // Tests the game of master-list row run.gi (its ROM name and ending) against the listing of the
    // folder being scanned; a find goes to scanList.
    void ShowFileSystemType2(const FolderListing& folder, const std::string& ending);

    int scanCount = 1; // next free row of scanList
    std::string listFile; // the list file being written, a name in the program's folder

private:
    // Sets the caption, folder and file of one list, shows them, and scans it.
    void scanOne(const std::string& caption, const std::string& folder, const std::string& file);
    void writeListFile();
    // A folder value as it lies on disk: a relative one is taken from the program's folder.
    std::string onDisk(const std::string& folder) const;
    const FolderListing& listingOf(const std::string& folder);
    void repaint();

    // The folders' listings live from the first scan that starts to the end of it.
    class ScanScope
    {
    public:
        explicit ScanScope(RomScan& scan);
        ~ScanScope();
        ScanScope(const ScanScope&) = delete;
        ScanScope& operator=(const ScanScope&) = delete;

    private:
        RomScan& m_scan;
        bool m_outer;
    };

    CatalogueContext m_ctx;
    Navigator& m_nav;
    ScanControls m_ui;
    std::map<std::string, FolderListing> m_listings; // for the length of one scan
    bool m_scanning = false;
};

} // namespace ombrel::catalogue
