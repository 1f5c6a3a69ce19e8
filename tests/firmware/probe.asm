; SPDX-License-Identifier: MIT
; A program that tests the bench itself: it lets a test drive the generator's lines and check the USART.
; A byte of 80h or more is written to port D. W waits 15 ms and sends RCSTA. C converts and sends the result. R
; re-enables the receiver. Any other byte is echoed, followed by the value that RCSTA had before the byte was read.
        list    p=16f877, r=dec
        include "p16f877.inc"
        __config _HS_OSC & _WDT_OFF & _PWRTE_ON & _BODEN_ON & _LVP_OFF & _CP_OFF
        errorlevel -302

byte    equ     0x20
state   equ     0x21
count   equ     0x22

        org     0
        banksel TRISD
        movlw   0xF0
        movwf   TRISD
        movlw   0x85            ; right-justified, reference at AN3
        movwf   ADCON1
        movlw   10
        movwf   SPBRG
        movlw   0x24
        movwf   TXSTA
        banksel PORTD
        clrf    PORTD
        movlw   0x90
        movwf   RCSTA
        movlw   0x81            ; Fosc/32, channel 0
        movwf   ADCON0

loop    btfss   PIR1, RCIF
        goto    loop
        movf    RCSTA, w
        movwf   state
        movf    RCREG, w
        movwf   byte
        btfsc   byte, 7
        goto    lines
        xorlw   'C'
        btfsc   STATUS, Z
        goto    convert
        xorlw   'C' ^ 'W'
        btfsc   STATUS, Z
        goto    wait
        xorlw   'W' ^ 'R'
        btfsc   STATUS, Z
        goto    ready
        movf    byte, w
        call    send
        movf    state, w
        call    send
        goto    loop

lines   movf    byte, w
        andlw   0x0F
        movwf   PORTD
        goto    loop

ready   bcf     RCSTA, CREN
        bsf     RCSTA, CREN
        goto    loop

wait    movlw   100
        movwf   count
outer   clrf    byte
inner   decfsz  byte, f
        goto    inner
        decfsz  count, f
        goto    outer
        movf    RCSTA, w
        call    send
        bcf     RCSTA, CREN     ; clears OERR; two bytes stay in the buffer
        bsf     RCSTA, CREN
        goto    loop

convert bsf     ADCON0, GO
busy    btfsc   ADCON0, GO
        goto    busy
        movf    ADRESH, w
        call    send
        banksel ADRESL
        movf    ADRESL, w
        banksel TXREG
        call    send
        goto    loop

send    btfss   PIR1, TXIF
        goto    send
        movwf   TXREG
        return
        end
