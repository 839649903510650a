@echo off
rem Fills the folder dos\ of the program from a folder with a free DOS: fill-dos.bat FOLDER
rem Each file gets the name that the program looks for; a name that the free DOS has no program for gets ABSENT.EXE,
rem which says so when it is started. Nothing is replaced: dos\ must be empty or missing. Nothing is changed in FOLDER.
rem Exit codes: 0 dos\ is filled, 1 nothing was written, 2 a file could not be copied.
setlocal
if "%~1"=="" goto usage
set "from=%~f1"
if not exist "%from%\*.*" goto nofolder
cd /d "%~dp0..\.."
set occupied=
for %%f in (dos\*.*) do set occupied=1
if defined occupied goto occupied
set found=
call :find KERNEL.SYS
if not defined found goto nokernel
set found=
call :find COMMAND.COM
if not defined found goto nocommand

if not exist dos\*.* md dos
set failed=
set absent=
rem IO.SYS is ours; it starts KERNEL.SYS.
copy /b files\freedos\IO.SYS dos\IO.SYS >nul
if errorlevel 1 set failed=1
call :optional KERNEL.SYS

rem The names that the program asks for, and what the free ones are called.
call :required COMMAND.COM
call :required ATTRIB.EXE ATTRIB.COM
call :required CHOICE.COM CHOICE.EXE
call :required DELTREE.EXE DELTREE.COM
call :required DISKCOPY.COM DISKCOPY.EXE
call :required EDIT.COM EDIT.EXE
call :required EMM386.EXE JEMM386.EXE
call :required EXTRACT.EXE
call :required FC.EXE FC.COM
call :required FDISK.EXE FDISK.COM
call :required FORMAT.COM FORMAT.EXE
call :required HIMEM.SYS HIMEM.EXE HIMEMX.EXE HIMEMX.SYS XMGR.SYS
call :required LABEL.EXE LABEL.COM
call :required MEM.EXE MEM.COM
call :required MODE.COM MODE.EXE
call :required MORE.COM MORE.EXE
call :required MOVE.EXE MOVE.COM
call :required SCANDISK.EXE SCANDISK.COM CHKDSK.EXE CHKDSK.COM
call :required SMARTDRV.EXE
call :required SORT.EXE SORT.COM
call :required SYS.COM SYS.EXE
call :required XCOPY.EXE XCOPY.COM
call :required XCOPY32.EXE
call :required XCOPY32.MOD

rem What the disks take besides when it is there.
set number=
for %%f in (CDROM CDROM2 CDROM3 XCDROM UIDE UDVD2 GCDROM ATAPICDD) do call :driver %%f.SYS
call :optional MSCDEX.EXE SHSUCDX.COM SHSUCDX.EXE
call :optional DEVLOAD.COM DEVLOAD.EXE
call :optional ASPICD.SYS
call :optional ASPIDISK.SYS
call :optional KEYB.COM KEYB.EXE
for %%f in (KEYBOARD KEYBRD2 KEYBRD3 KEYBRD4) do call :optional %%f.SYS
call :optional DOSKEY.COM DOSKEY.EXE
call :optional MOUSE.COM CTMOUSE.EXE CTMOUSE.COM
call :optional CHKDSK.EXE CHKDSK.COM
call :optional DEBUG.EXE DEBUG.COM

if defined failed goto failed
echo dos\ is filled from %from%.
if defined absent echo Not part of this DOS:%absent%
exit /b 0

rem Sets found to the path of the first of the names in FOLDER or in a folder that free systems put them into.
:find
for %%n in (%*) do for %%d in (. kernel tools bin dos freedos freedos\bin fdos fdos\bin svardos) do (
    if not defined found if exist "%from%\%%d\%%n" set "found=%from%\%%d\%%n"
)
goto :eof

rem Copies the first that is there of the names to dos\ under the first name, otherwise ABSENT.EXE.
:required
set found=
call :find %*
if defined found goto take
set "absent=%absent% %1"
set "found=files\freedos\ABSENT.EXE"
:take
copy /b "%found%" "dos\%1" >nul
if errorlevel 1 set failed=1
goto :eof

:optional
set found=
call :find %*
if defined found goto take
goto :eof

rem The drivers for CD-ROM drives become CDROM.SYS, CDROM2.SYS and CDROM3.SYS.
:driver
set found=
if not "%number%"=="4" call :find %1
if not defined found goto :eof
copy /b "%found%" "dos\CDROM%number%.SYS" >nul
if errorlevel 1 set failed=1
if "%number%"=="3" set number=4
if "%number%"=="2" set number=3
if "%number%"=="" set number=2
goto :eof

:usage
echo fill-dos.bat FOLDER, where FOLDER holds a free DOS: KERNEL.SYS, COMMAND.COM and its programs
exit /b 1
:nofolder
echo There is no folder %from%.
exit /b 1
:occupied
echo The folder dos\ holds files already: move them away first, so that no disk mixes two kinds of DOS.
exit /b 1
:nokernel
echo There is no KERNEL.SYS in %from%, nor in its folders kernel, bin, freedos ...
exit /b 1
:nocommand
echo There is no COMMAND.COM in %from%, nor in its folders kernel, bin, freedos ...
exit /b 1
:failed
echo Not every file could be copied: empty dos\ and try again.
exit /b 2
