; SPDX-License-Identifier: MIT
; Reset, configuration, and the loop that waits for commands.
;
; The watchdog resets the board after 0.1 to 0.5 s. The loop below clears it, and so does each point of a sweep. The
; longest interval between two clears is a settling time of 10 ms.

        include "board.inc"

        extern  line_start, line_next, line_watch
        extern  commands_start, commands_byte, commands_abort
        extern  plan_reset
        extern  synth_start
        extern  converter_start
        extern  frames_start

        __config _HS_OSC & _WDT_ON & _PWRTE_ON & _BODEN_ON & _LVP_OFF & _CP_OFF & _CPD_OFF & _WRT_ENABLE_OFF & _DEBUG_OFF

reset_vector    code 0x000
        clrf    PCLATH
        goto    main

main_code       code
main:
        clrwdt
        clrf    STATUS                  ; bank 0
        clrf    INTCON
        clrf    PORTA
        clrf    PORTB
        movlw   B'01000000'             ; RC6 at 1, the idle level, until the USART takes over
        movwf   PORTC
        clrf    PORTD
        clrf    PORTE
        banksel TRISA
        movlw   B'00001001'             ; RA0 detector, RA3 reference
        movwf   TRISA
        movlw   B'11111111'             ; jumpers, programmer and unconnected pins, all with pull-ups
        movwf   TRISB
        movlw   B'10000000'             ; RC7 receives
        movwf   TRISC
        clrf    TRISD
        clrf    TRISE
        movlw   B'00001100'             ; pull-ups on; watchdog prescaler 16 (16 times 7 to 33 ms)
        movwf   OPTION_REG
        banksel PORTA

        call    frames_start
        call    converter_start         ; takes long enough for the jumper pins to be pulled up
        call    synth_start
        call    plan_reset
        call    commands_start
        call    line_start              ; last, so that nothing is received before interrupts are enabled
        bsf     INTCON, GIE

wait:
        clrwdt
        call    line_watch
        call    line_next
        xorlw   LINE_BYTE
        skpnz
        goto    take_byte
        xorlw   LINE_BYTE ^ LINE_ABORT
        skpz
        goto    wait
        call    commands_abort
        goto    wait
take_byte:
        call    commands_byte
        goto    wait

        end
