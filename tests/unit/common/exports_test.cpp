#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

TEST(Exports, AreTheFunctionsOfTheHeadersAndNothingElse)
{
    std::FILE * const listing =
        ::popen("nm --dynamic --defined-only --format=just-symbols '" KELD_COMMON_LIBRARY "'", "r");
    ASSERT_NE(listing, nullptr);
    std::string text;
    char block[4096];
    while (size_t const count = std::fread(block, 1, sizeof(block), listing))
        text.append(block, count);
    ASSERT_EQ(::pclose(listing), 0);

    std::vector<std::string> names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        names.push_back(line);
    EXPECT_THAT(names,
                testing::UnorderedElementsAre(
                    "CloseHandle", "CreateFileMappingA", "FileMappingFree", "FileMappingSize",
                    "FreeTreeS_P", "GetLastError", "GetNodeDataS_P", "MapViewOfFile", "NewTreeS_P",
                    "OpenFileMappingA", "PrepareViewOfFile", "ReleaseFileMappings", "ServerEndNow",
                    "ServerEndOk", "ServerFreeOldPath", "ServerGetEnding", "ServerGetProcess",
                    "ServerGetPtr", "ServerOpen", "ServerQueryExist", "ServerSendValist",
                    "ServerSetInactive", "ServerSetLumoRunning", "ServerSetOldPath",
                    "ServerShutdownAndClosePipes", "SetNodeDataS_P", "TranslatorAttach",
                    "UnmapViewOfFile", "WalkTreeS_P", "crash_report_get_filename",
                    "enableDatabaseStorage", "envexists_utf8", "getCurrentProcessId", "get_tmp_dir",
                    "getenv_utf8", "iaccess", "install_crash_report_args", "pipe_read",
                    "setDatabaseStorage", "str_case_cmp", "towin_path", "unlink_utf8",
                    "vstudio_printf", "xmlSaveFormatFileEnc_utf8"));
}
