@echo off
rem more-dos.bat FOLDER takes further DOS files from a Windows 98 setup CD into the folder dos beside this file:
rem those that are not among the 25 which the program needs, and that the disks include when they are there.
rem FOLDER is the folder WIN98 of the CD, or a copy of it. A file that is in dos already stays as it is.
rem Ends with 0 if dos then has at least one of them, with 1 if it has none, with 2 if FOLDER has no cabinets.
setlocal
if "%~1"=="" goto usage
if not exist "%~1\*.cab" goto nocab
if not exist "%~dp0dos\" mkdir "%~dp0dos"
set dos=%~dp0dos
rem The one of the system, and not a program of that name in the folder.
set expand=%SystemRoot%\System32\expand.exe
set taken=0
set found=0
set missing=
pushd "%~1"
if errorlevel 1 goto nocab
for %%F in (MSCDEX.EXE KEYB.COM KEYBOARD.SYS KEYBRD2.SYS KEYBRD3.SYS KEYBRD4.SYS) do call :take %%F %%F
for %%F in (DOSKEY.COM MOUSE.COM CHKDSK.EXE DEBUG.EXE ASPICD.SYS) do call :take %%F %%F
call :take OAKCDROM.SYS CDROM.SYS
popd
echo %taken% files were taken into %dos%
if not "%missing%"=="" echo Not found there:%missing%
if %found%==0 exit /b 1
exit /b 0

rem take NAME TARGET: the file NAME of the cabinets becomes TARGET in the folder dos.
:take
if exist "%dos%\%2" goto there
if exist "%1" copy /y "%1" "%dos%\%2" >nul
if exist "%dos%\%2" goto took
"%expand%" *.cab -f:%1 "%dos%" >nul 2>nul
if not exist "%dos%\%1" goto lacks
if not "%1"=="%2" ren "%dos%\%1" %2
:took
echo %2
set /a taken=taken+1
:there
set /a found=found+1
goto :eof
:lacks
set missing=%missing% %1
goto :eof

:nocab
echo "%~1" holds no cabinets: name the folder WIN98 of a Windows 98 setup CD.
exit /b 2

:usage
echo Usage: more-dos.bat FOLDER, where FOLDER is the folder WIN98 of a Windows 98 setup CD
exit /b 2
