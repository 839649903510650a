; Stand-in for a DOS program: says that it is one and ends with code 1, so that no batch file takes its work for done.
; NAME is the file it stands for; DRIVER is defined when that is a driver of the driver store, which a program can be too.
; It is a plain memory image, which DOS also starts when the file is called .EXE.

        cpu     8086
        bits    16
        org     100h

        mov     dx, text
        mov     ah, 9                   ; print up to "$"
        int     21h
        mov     ax, 4C01h               ; end with code 1
        int     21h

%ifdef DRIVER
text:   db      NAME, ": a stand-in of the demonstration, not the DOS driver.", 13, 10
        db      "Make the disk again with your own driver cabinets to have the real one.", 13, 10, "$"
%else
text:   db      NAME, ": a stand-in of the demonstration, not the DOS program.", 13, 10
        db      "Make the disk again with your own DOS files to have the real one.", 13, 10, "$"
%endif
