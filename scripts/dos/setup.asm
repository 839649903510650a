; Stand-in for the setup of a Windows: shows the command line that a disk gives it.

        cpu     8086
        bits    16
        org     100h

        mov     dx, text
        mov     ah, 9                   ; print up to "$"
        int     21h
        mov     si, 80h                 ; the length of the arguments, and these
        lodsb
        mov     cl, al
        mov     ch, 0
        mov     dx, si
        mov     bx, 1                   ; standard output
        mov     ah, 40h
        int     21h
        mov     dx, lineEnd
        mov     ah, 9
        int     21h
        mov     ax, 4C00h
        int     21h

text:   db      "The setup was started with:$"
lineEnd: db     13, 10, "$"
