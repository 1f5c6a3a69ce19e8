; SPDX-License-Identifier: MIT
; The sweep plan: start, step, and the tuning words of the 400 points.
;
; A 64-bit accumulator contains hertz * K + 2^31. Its upper half is the rounded tuning word. The additions are exact, so
; no rounding error accumulates.
;
; plan_start, plan_step (4 bytes each, bank 1)   hertz; the step in two's complement
; plan_crc (2 bytes)   CRC of start and step, high byte first
; plan_ready           bit 0: prepared
;
; plan_reset     start = step = 0, not prepared.                                                uses W, FSR
; plan_word      synth_word = word of number (hertz, below the clock). 1,110 cycles at most     uses W, FSR
; plan_prepare   check all points, compute accumulators and CRC; C = 1: prepared, C = 0: a
;                point is negative or not below the clock. 3,410 cycles at most                 uses W, FSR
; plan_first     accumulator = first point. 24 cycles                                           uses W
; plan_next      accumulator = next point, or the first after the last. 28 to 39 cycles         uses W

        include "board.inc"

        global  plan_start, plan_step, plan_crc, plan_ready
        global  plan_reset, plan_word, plan_prepare, plan_first, plan_next

        extern  number, factor, product
        extern  numbers_load, numbers_factor, numbers_below, numbers_negate, numbers_multiply
        extern  synth_word, synth_clock, synth_scale
        extern  crc_high, crc_low, crc_start, crc_add

plan_data       udata
low_half        res 4                   ; lower half of the accumulator; synth_word is the upper half
first           res 8                   ; accumulator of the first point
step            res 8                   ; step * K
left            res 2                   ; plan_next calls until the first point, encoded for decfsz
plan_crc        res 2
plan_ready      res 1
counter         res 1

plan_bank1      udata
plan_start      res 4
plan_step       res 4

copy8   macro   from, to
        variable i = 0
        while i < 8
        movf    from + i, W
        movwf   to + i
i       += 1
        endw
        endm

plan_code       code
plan_reset:
        bcf     plan_ready, 0
        banksel plan_start
        clrf    plan_start
        clrf    plan_start + 1
        clrf    plan_start + 2
        clrf    plan_start + 3
        clrf    plan_step
        clrf    plan_step + 1
        clrf    plan_step + 2
        clrf    plan_step + 3
        banksel plan_ready
        return

; product = number * K + 2^31. The sum is below 2^64 for every number below the clock.
scale_up:
        movlw   synth_scale
        movwf   FSR
        call    numbers_factor
        call    numbers_multiply
        movlw   0x80
        addwf   product + 3, F
        skpc
        return
        incfsz  product + 4, F
        return
        incfsz  product + 5, F
        return
        incfsz  product + 6, F
        return
        incf    product + 7, F
        return

plan_word:
        call    scale_up
        movf    product + 4, W
        movwf   synth_word
        movf    product + 5, W
        movwf   synth_word + 1
        movf    product + 6, W
        movwf   synth_word + 2
        movf    product + 7, W
        movwf   synth_word + 3
        return

; number = |step|; C = 1 if the step is negative.
amount:
        movlw   plan_step
        movwf   FSR
        call    numbers_load
        clrc
        btfss   number + 3, 7
        return
        call    numbers_negate
        setc
        return

; The start is between 0 and the clock and the points change monotonically, so only the last point has to be checked.
plan_prepare:
        bcf     plan_ready, 0
        call    amount
        clrf    factor + 4
        clrf    factor + 3
        clrf    factor + 2
        movlw   HIGH (POINTS - 1)
        movwf   factor + 1
        movlw   LOW (POINTS - 1)
        movwf   factor
        rlf     counter, F              ; save the sign
        call    numbers_multiply        ; product = distance from the first point to the last
        movf    product + 4, W          ; above 32 bits?
        iorwf   product + 5, W
        skpz
        goto    refuse
        movlw   plan_start
        movwf   FSR
        call    numbers_load
        btfsc   counter, 0
        goto    falling
        movf    product, W              ; rising: start + distance must be below the clock
        addwf   number, F
        add_up  product + 1, number + 1
        add_up  product + 2, number + 2
        add_up  product + 3, number + 3
        skpnc
        goto    refuse
        movlw   synth_clock
        movwf   FSR
        call    numbers_below
        skpnc
        goto    refuse
        goto    accept
falling:                                ; the distance must not exceed the start
        movlw   product
        movwf   FSR
        call    numbers_below
        skpc
        goto    refuse

accept:
        movlw   plan_start
        movwf   FSR
        call    numbers_load
        call    scale_up
        copy8   product, first
        call    amount
        rlf     counter, F
        movlw   synth_scale
        movwf   FSR
        call    numbers_factor
        call    numbers_multiply
        copy8   product, step
        btfsc   counter, 0
        call    negate_step

        call    crc_start               ; CRC of start and step, each highest byte first
        movlw   plan_start + 3
        call    crc_number
        movlw   plan_step + 3
        call    crc_number
        movf    crc_high, W
        movwf   plan_crc
        movf    crc_low, W
        movwf   plan_crc + 1
        bsf     plan_ready, 0
        setc
        return
refuse:
        clrc
        return

; step = -step
negate_step:
        comf    step, F
        comf    step + 1, F
        comf    step + 2, F
        comf    step + 3, F
        comf    step + 4, F
        comf    step + 5, F
        comf    step + 6, F
        comf    step + 7, F
        incfsz  step, F
        return
        incfsz  step + 1, F
        return
        incfsz  step + 2, F
        return
        incfsz  step + 3, F
        return
        incfsz  step + 4, F
        return
        incfsz  step + 5, F
        return
        incfsz  step + 6, F
        return
        incf    step + 7, F
        return

; Add four bytes to the CRC, starting at the address in W and going down.
crc_number:
        movwf   FSR
        movlw   4
        movwf   counter
crc_byte:
        movf    INDF, W
        call    crc_add
        decf    FSR, F
        decfsz  counter, F
        goto    crc_byte
        return

plan_next:
        decfsz  left, F
        goto    advance
        decfsz  left + 1, F
        goto    advance
plan_first:
        movf    first, W
        movwf   low_half
        movf    first + 1, W
        movwf   low_half + 1
        movf    first + 2, W
        movwf   low_half + 2
        movf    first + 3, W
        movwf   low_half + 3
        movf    first + 4, W
        movwf   synth_word
        movf    first + 5, W
        movwf   synth_word + 1
        movf    first + 6, W
        movwf   synth_word + 2
        movf    first + 7, W
        movwf   synth_word + 3
        movlw   LOW POINTS
        movwf   left
        movlw   HIGH POINTS + 1
        movwf   left + 1
        return
advance:
        movf    step, W
        addwf   low_half, F
        add_up  step + 1, low_half + 1
        add_up  step + 2, low_half + 2
        add_up  step + 3, low_half + 3
        add_up  step + 4, synth_word
        add_up  step + 5, synth_word + 1
        add_up  step + 6, synth_word + 2
        add_up  step + 7, synth_word + 3
        return

        end
