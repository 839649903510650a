@echo off
rem buildall.bat FOLDER [144 or 288] [NUMBERED] builds every disk of the catalogue into FOLDER: NAME.img, or with NUMBERED
rem DSKA0000.IMG, DSKA0001.IMG and so on in the order of the catalogue, the names by which floppy emulators select.
rem Prints a line for each disk; with NUMBERED the same lines are in FOLDER\disks.txt.
rem Ends with 0 when every disk was built, with 1 when one was not, with 2 when the call is wrong.
setlocal
if "%~1"=="" goto usage
set type=144
set numbered=
for %%A in (%2 %3) do call :option %%A
if defined wrong goto usage
set "folder=%~f1"
if not exist "%~dp0files\disklist.ini" goto nolist
if not exist "%folder%\." mkdir "%folder%"
if not exist "%folder%\." goto nofolder
if defined numbered type nul >"%folder%\disks.txt"
set number=0
set built=0
set failed=0
call :build custom
for /f "usebackq tokens=1,* delims==" %%K in ("%~dp0files\disklist.ini") do if /i "%%K"=="Name" call :build %%L
echo %built% built, %failed% not built
if not %failed%==0 exit /b 1
exit /b 0

:option
if "%1"=="144" goto type
if "%1"=="288" goto type
if /i "%1"=="NUMBERED" set numbered=yes
if /i not "%1"=="NUMBERED" set wrong=yes
goto :eof
:type
set type=%1
goto :eof

rem build NAME
:build
set image=%1.img
if not defined numbered goto name
set image=000%number%
set image=DSKA%image:~-4%.IMG
:name
set /a number=number+1
"%~dp0velbooter.com" -t %type% %1 %folder%\%image% >nul 2>nul
set code=%errorlevel%
if %code%==0 goto good
set /a failed=failed+1
set line=%image%  %1  not built, exit code %code%
goto say
:good
set /a built=built+1
set line=%image%  %1
:say
echo %line%
if defined numbered >>"%folder%\disks.txt" echo %line%
goto :eof

:nolist
echo There is no catalogue files\disklist.ini beside this file.
exit /b 2
:nofolder
echo The folder %folder% cannot be created.
exit /b 2
:usage
echo Usage: buildall.bat FOLDER [144 or 288] [NUMBERED]
exit /b 2
