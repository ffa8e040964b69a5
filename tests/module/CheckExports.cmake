# The module shows its plain exports and nothing else. NM lists the symbols of MODULE.
execute_process(COMMAND ${NM} -D --defined-only ${MODULE} OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${listing}")
list(TRANSFORM lines REPLACE "^.* " "")
list(SORT lines)
set(expected ktdxBlockReferenceMonitorAttach ktdxBlockReferenceMonitorDetach ktdxDocTimerAttach
    ktdxGetBlockRecordIdsOfKtDbTables ktdxGetKtDbTableIds ktdxReadLegacyBlkTemplate ktdxUpdateBlockGraph
    ktrxEntryPoint ktrxGetApiVersion)
if(NOT lines STREQUAL expected)
  message(FATAL_ERROR "${MODULE} exports\n  ${lines}\ninstead of\n  ${expected}")
endif()
