@echo off
rem Runs under Windows when a disk is built with the plugin "stamp": notes when and where.
rem The program starts it in the application folder.
if not exist plugins\stamp\bin\STAMP.BAT goto end
>plugins\stamp\STAMP.TXT echo This disk was built on %DATE% at %TIME%
>>plugins\stamp\STAMP.TXT echo by %USERNAME% on %COMPUTERNAME%.
:end
