@echo off
rem demo.cmd [DRAWING [SCRIPT]]: follows a parts list through a dozen edits of the sample, or of any KiCad schematic,
rem which stays as it is. What it writes is in the folder demo beside this file.
setlocal
set "bin=%~dp0bin"
set "out=%~dp0demo"
set "drawing=sensor-node.kicad_sch"
set "script=demo.script"
if not "%~1"=="" set "drawing=%~f1"
if not "%~1"=="" set "script=any-drawing.script"
if not "%~2"=="" set "script=%~f2"
if not exist "%out%" mkdir "%out%"
if errorlevel 1 exit /b 1
copy /y "%~dp0samples\*" "%out%" >nul
if errorlevel 1 exit /b 1
pushd "%out%"
"%bin%\kthost.exe" --load "%bin%\KtDxNotify.kmx" --load "%bin%\PartsList.kmx" --script "%script%" "%drawing%"
set "status=%errorlevel%"
popd
if not "%status%"=="0" exit /b %status%
echo demo: done; what it wrote is in demo\
