@echo off
rem buildall.bat FOLDER [144 or 288] [NUMBERED] builds every disk of the catalogue into FOLDER: NAME.img, or with NUMBERED
rem DSKA0000.IMG, DSKA0001.IMG and so on in the order of the catalogue, the names by which floppy emulators select.
rem Prints a line for each disk; with NUMBERED the same lines are in FOLDER\disks.txt.
rem Ends with 0 when every disk was built, with 1 when one was not, with 2 when the call is wrong.
setlocal
set "app=%~dp0"
if "%~1"=="" goto usage
set type=144
set numbered=
set wrong=
for %%A in (%2 %3) do call :option %%A
if defined wrong goto usage
set "folder=%~f1"
rem The program takes a target without a drive letter for one in its own folder.
if not "%folder:~1,1%"==":" goto noletter
if "%folder:~-1%"=="\" set "folder=%folder:~0,-1%"
if not exist "%app%files\disklist.ini" goto nolist
if not exist "%folder%\." mkdir "%folder%"
if not exist "%folder%\." goto nofolder
if defined numbered type nul >"%folder%\disks.txt"
set number=0
set built=0
set failed=0
call :build custom
call :read Disks_List Count
set /a count=value
for /l %%N in (1,1,%count%) do call :disk %%N
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

rem read SECTION KEY: sets value to that of the catalogue, or to nothing
:read
set value=
set section=
for /f "usebackq tokens=1,2 delims== " %%K in ("%app%files\disklist.ini") do call :row "%%K" "%%L" %1 %2
goto :eof
:row
set "key=%~1"
if "%key:~0,1%"=="[" set "section=%key%"
if /i "%section%"=="[%3]" if /i "%key%"=="%4" if not defined value set "value=%~2"
goto :eof

rem disk NUMBER
:disk
call :read %1 Name
if defined value call :build %value%
goto :eof

rem build NAME
:build
set image=%1.img
if not defined numbered goto name
set image=000%number%
set image=DSKA%image:~-4%.IMG
:name
set /a number=number+1
rem The target cannot be quoted, and in this form a folder may have any character.
setlocal enabledelayedexpansion
"!app!velbooter.com" -t %type% %1 !folder!\%image% >nul 2>nul
endlocal & set code=%errorlevel%
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
echo The folder "%folder%" cannot be created.
exit /b 2
:noletter
echo The folder "%folder%" is not on a drive with a letter.
exit /b 2
:usage
echo Usage: buildall.bat FOLDER [144 or 288] [NUMBERED]
exit /b 2
