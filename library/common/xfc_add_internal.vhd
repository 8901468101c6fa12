-- Adds two values of an internal form, or subtracts the second when addsub is 1: a common part of the adders. The
-- operand with the smaller exponent is rounded to odd where it is shifted over the edge; the sum of this and the other
-- one is exact, and is halved (the lost bit or'ed into the lowest) when it uses up the guard bits. inf - inf is nan,
-- 0 - 0 is +0 but -0 - 0 is -0; exponent field 0 is zero.
--   step difference:  which operand is zero, which one leads, by how much the exponents differ
--   step order:       the operand with the larger exponent and the other one, which is shifted by 1 when a leads
--   step shift:       the shift by whole bytes
--   step align:       the shift by single bits; lost bits are or'ed into the lowest
--   step add:         one carry chain; of a split sum the lower half
--   step carry:       upper half of a split sum
--   step settle:      halve when the guard bits are used up; flags
-- Registers behind order, align and settle always, behind difference and carry as their borders say, behind add as its
-- border says when the sum is split. With one behind difference, that of the smaller operand is not behind order but
-- behind shift. The mantissa has up to 64 bits.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_add_internal is
  generic (mantissa : positive; exponent_bits : positive; split : natural; difference_border : natural;
           add_border : natural; carry_border : natural);
  port (sysclk, enable, addsub : in std_logic;
        aa : in std_logic_vector(mantissa + exponent_bits downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + exponent_bits downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + exponent_bits downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_add_internal;

architecture rtl of xfc_add_internal is
  constant fine_levels   : positive := 3;                        -- distances below 8
  constant levels        : positive := 5 + (mantissa + 31) / 64;   -- enough to shift all but the sign out
  constant word_levels   : positive := levels - fine_levels - 1;   -- distances of 16 and more

  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype exponent_difference is std_logic_vector(exponent_bits downto 0);   -- two's complement
  subtype mantissa_field is std_logic_vector(mantissa - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);                        -- sign, nan, zip, sat

  -- difference
  signal a_exponent_d, b_exponent_d, a_exponent, b_exponent : exponent_field;
  signal a_mantissa_d, b_mantissa_d, a_mantissa, b_mantissa : mantissa_field;
  signal apart_d : exponent_difference;
  signal apart : std_logic_vector(levels - 1 downto 0);
  signal a_flags_d, b_flags_d, a_flags, b_flags : std_logic_vector(2 downto 0);   -- nan, zip, sat
  signal far_d, far, subtract_d, subtract, b_leads_d, b_leads : std_logic_vector(0 downto 0);
  signal a_zero, b_zero : std_logic;

  -- order
  signal a_sign, b_sign, smaller_lost, smaller_is_zero : std_logic;
  signal nan, zip, sat, mark_sign : std_logic;
  signal larger_exponent_d, larger_exponent : exponent_field;
  signal larger_d, larger, smaller_d, smaller : mantissa_field;
  signal shift_d, shift : std_logic_vector(levels + 3 downto 0);
  signal inverts_d, inverts : std_logic_vector(1 downto 0);   -- subtract, the smaller operand is the subtrahend
  signal marks_d, marks : mark_field;

  -- shift
  signal order_apart, distance : std_logic_vector(levels - 1 downto 0);
  signal order_far, order_b_leads, lost_before, is_zero, words_lost : std_logic;
  signal by_words, by_words_or_zero, coarse_d, coarse : mantissa_field;
  signal lost_d, lost : std_logic_vector(1 downto 0);         -- of words, of a byte
  signal fine_d, fine : std_logic_vector(fine_levels - 1 downto 0);

  -- align
  signal aligned, jammed, addend_d, addend, augend : mantissa_field;
  signal coarse_lost, aligned_lost : std_logic;
  signal carry : std_logic_vector(0 downto 0);
  signal align_exponent : exponent_field;
  signal align_marks : mark_field;

  -- add and carry
  signal sum_d, sum : std_logic_vector(mantissa downto 0);
  signal add_exponent, carry_exponent : exponent_field;
  signal add_marks, carry_marks : mark_field;
  signal marked_d, marked, near_d, near : std_logic;      -- near: perhaps too large
  signal ahead_d, ahead : std_logic_vector(1 downto 0);

  -- settle
  signal halve : unsigned(0 downto 0);
  signal halved, settled : std_logic_vector(mantissa - 2 downto 0);   -- all but the sign
  signal result_sign : std_logic;
  signal result_d, result : mantissa_field;
  signal result_exponent_d, result_exponent : exponent_field;
  signal lowest_comes, too_large : std_logic;
  signal result_flags_d, result_flags : std_logic_vector(2 downto 0);   -- nan, zip, sat
begin
  -- difference
  a_exponent_d <= aa(exponent_bits downto 1);
  b_exponent_d <= bb(exponent_bits downto 1);
  a_mantissa_d <= aa(mantissa + exponent_bits downto exponent_bits + 1);
  b_mantissa_d <= bb(mantissa + exponent_bits downto exponent_bits + 1);
  a_zero <= '1' when aazip = '1' or unsigned(a_exponent_d) = 0 else '0';
  b_zero <= '1' when bbzip = '1' or unsigned(b_exponent_d) = 0 else '0';
  a_flags_d <= aanan & a_zero & aasat;
  b_flags_d <= bbnan & b_zero & bbsat;
  subtract_d(0) <= addsub;
  -- a - b - 1 in two's complement: by how much it shifts the smaller operand, when that is b after a shift by 1, and as
  -- a complement when it is a. Of equal exponents b leads.
  apart_d <= std_logic_vector(unsigned('0' & a_exponent_d) + unsigned('1' & not b_exponent_d));
  far_d(0) <= '1' when signed(apart_d(exponent_bits downto levels)) /= 0 and
                       signed(apart_d(exponent_bits downto levels)) /= -1 else '0';
  -- A zero never leads another operand.
  b_leads_d(0) <= a_zero or (not b_zero and apart_d(exponent_bits));

  difference_0 : entity work.xfc_register generic map (exponent_bits, difference_border)
    port map (sysclk, enable, a_exponent_d, a_exponent);
  difference_1 : entity work.xfc_register generic map (exponent_bits, difference_border)
    port map (sysclk, enable, b_exponent_d, b_exponent);
  difference_2 : entity work.xfc_register generic map (mantissa, difference_border)
    port map (sysclk, enable, a_mantissa_d, a_mantissa);
  difference_3 : entity work.xfc_register generic map (mantissa, difference_border)
    port map (sysclk, enable, b_mantissa_d, b_mantissa);
  difference_4 : entity work.xfc_register generic map (levels, difference_border)
    port map (sysclk, enable, apart_d(levels - 1 downto 0), apart);
  difference_5 : entity work.xfc_register generic map (1, difference_border)
    port map (sysclk, enable, far_d, far);
  difference_6 : entity work.xfc_register generic map (3, difference_border)
    port map (sysclk, enable, a_flags_d, a_flags);
  difference_7 : entity work.xfc_register generic map (3, difference_border)
    port map (sysclk, enable, b_flags_d, b_flags);
  difference_8 : entity work.xfc_register generic map (1, difference_border)
    port map (sysclk, enable, subtract_d, subtract);
  difference_9 : entity work.xfc_register generic map (1, difference_border)
    port map (sysclk, enable, b_leads_d, b_leads);

  -- order: what is shifted by 1 here may lose a bit
  larger_exponent_d <= b_exponent when b_leads(0) = '1' else a_exponent;
  larger_d <= a_mantissa when b_leads(0) = '0' else not b_mantissa when subtract(0) = '1' else b_mantissa;
  smaller_d <= a_mantissa when b_leads(0) = '1' else b_mantissa(mantissa - 1) & b_mantissa(mantissa - 1 downto 1);
  smaller_lost <= not b_leads(0) and b_mantissa(0);
  smaller_is_zero <= a_flags(1) when b_leads(0) = '1' else b_flags(1);
  shift_d <= apart & far & b_leads & smaller_lost & smaller_is_zero;
  inverts_d <= subtract(0) & (subtract(0) and not b_leads(0));

  a_sign <= a_mantissa(mantissa - 1);
  b_sign <= b_mantissa(mantissa - 1) xor subtract(0);
  nan <= a_flags(2) or b_flags(2) or (a_flags(0) and b_flags(0) and (a_sign xor b_sign));
  sat <= not nan and (a_flags(0) or b_flags(0));
  zip <= not nan and not sat and a_flags(1) and b_flags(1);
  mark_sign <= a_sign when a_flags(0) = '1' else b_sign when b_flags(0) = '1' else a_sign and b_sign;
  marks_d <= mark_sign & nan & zip & sat;

  order_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, larger_exponent_d, larger_exponent);
  order_1 : entity work.xfc_register generic map (mantissa, 1) port map (sysclk, enable, larger_d, larger);
  order_2 : entity work.xfc_register generic map (2, 1) port map (sysclk, enable, inverts_d, inverts);
  order_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);
  order_4 : entity work.xfc_register generic map (mantissa, 1 - difference_border)
    port map (sysclk, enable, smaller_d, smaller);
  order_5 : entity work.xfc_register generic map (levels + 4, 1 - difference_border)
    port map (sysclk, enable, shift_d, shift);
  order_apart <= shift(levels + 3 downto 4);
  order_far <= shift(3);
  order_b_leads <= shift(2);
  lost_before <= shift(1);
  is_zero <= shift(0);

  -- shift: a zero is shifted as zero
  distance <= (others => '1') when order_far = '1' else not order_apart when order_b_leads = '1' else order_apart;
  fine_d <= distance(fine_levels - 1 downto 0);
  shift_words : entity work.xfc_shift_right generic map (mantissa, word_levels, 2 ** (fine_levels + 1))
    port map (smaller, distance(levels - 1 downto fine_levels + 1), lost_before, by_words, words_lost);
  by_words_or_zero <= (others => '0') when is_zero = '1' else by_words;
  shift_byte : entity work.xfc_shift_right generic map (mantissa, 1, 2 ** fine_levels)
    port map (by_words_or_zero, distance(fine_levels downto fine_levels), '0', coarse_d, lost_d(0));
  lost_d(1) <= words_lost and not is_zero;

  shift_0 : entity work.xfc_register generic map (mantissa, difference_border)
    port map (sysclk, enable, coarse_d, coarse);
  shift_1 : entity work.xfc_register generic map (2, difference_border) port map (sysclk, enable, lost_d, lost);
  shift_2 : entity work.xfc_register generic map (fine_levels, difference_border)
    port map (sysclk, enable, fine_d, fine);

  -- align
  coarse_lost <= lost(1) or lost(0);
  shift_fine : entity work.xfc_shift_right generic map (mantissa, fine_levels, 1)
    port map (coarse, fine, coarse_lost, aligned, aligned_lost);
  jammed <= aligned(mantissa - 1 downto 1) & (aligned(0) or aligned_lost);
  addend_d <= not jammed when inverts(0) = '1' else jammed;

  align_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, larger_exponent, align_exponent);
  align_1 : entity work.xfc_register generic map (mantissa, 1) port map (sysclk, enable, larger, augend);
  align_2 : entity work.xfc_register generic map (mantissa, 1) port map (sysclk, enable, addend_d, addend);
  align_3 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, inverts(1 downto 1), carry);
  align_4 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks, align_marks);

  -- add and carry
  halves : if split = 1 generate
    constant low_bits  : positive := mantissa / 2;
    constant high_bits : positive := mantissa + 1 - low_bits;   -- one more than the operands have
    subtype high_field is std_logic_vector(high_bits - 1 downto 0);
    signal low_d, low : std_logic_vector(low_bits downto 0);
    signal augend_high_d, augend_high, addend_high_d, addend_high : high_field;
    signal high_without, high_with, high_sum : high_field;
  begin
    low_d <= std_logic_vector(resize(unsigned(augend(low_bits - 1 downto 0)), low_bits + 1) +
                              unsigned(addend(low_bits - 1 downto 0)) + unsigned(carry));
    augend_high_d <= augend(mantissa - 1) & augend(mantissa - 1 downto low_bits);
    addend_high_d <= addend(mantissa - 1) & addend(mantissa - 1 downto low_bits);

    add_0 : entity work.xfc_register generic map (exponent_bits, add_border)
      port map (sysclk, enable, align_exponent, add_exponent);
    add_1 : entity work.xfc_register generic map (low_bits + 1, add_border) port map (sysclk, enable, low_d, low);
    add_2 : entity work.xfc_register generic map (high_bits, add_border)
      port map (sysclk, enable, augend_high_d, augend_high);
    add_3 : entity work.xfc_register generic map (high_bits, add_border)
      port map (sysclk, enable, addend_high_d, addend_high);
    add_4 : entity work.xfc_register generic map (4, add_border) port map (sysclk, enable, align_marks, add_marks);

    -- both sums of the upper half are ready when the lower half's carry comes
    high_without <= std_logic_vector(unsigned(augend_high) + unsigned(addend_high));
    high_with <= std_logic_vector(unsigned(augend_high) + unsigned(addend_high) + 1);
    high_sum <= high_with when low(low_bits) = '1' else high_without;
    sum_d <= high_sum & low(low_bits - 1 downto 0);
  end generate;

  whole : if split = 0 generate
    sum_d <= std_logic_vector(unsigned(resize(signed(augend), mantissa + 1)) +
                              unsigned(resize(signed(addend), mantissa + 1)) + unsigned(carry));
    add_exponent <= align_exponent;
    add_marks <= align_marks;
  end generate;

  marked_d <= add_marks(2) or add_marks(1) or add_marks(0);
  near_d <= not marked_d when unsigned(add_exponent(exponent_bits - 1 downto exponent_bits - 3)) = 7 else '0';
  ahead_d <= marked_d & near_d;

  carry_0 : entity work.xfc_register generic map (exponent_bits, carry_border)
    port map (sysclk, enable, add_exponent, carry_exponent);
  carry_1 : entity work.xfc_register generic map (mantissa + 1, carry_border) port map (sysclk, enable, sum_d, sum);
  carry_2 : entity work.xfc_register generic map (4, carry_border) port map (sysclk, enable, add_marks, carry_marks);
  carry_3 : entity work.xfc_register generic map (2, carry_border) port map (sysclk, enable, ahead_d, ahead);
  marked <= ahead(1);
  near <= ahead(0);

  -- settle: exponents with their four high bits set are infinite; the lowest of the four may come with halving
  halve(0) <= sum(mantissa) xor sum(mantissa - 1);
  halved <= sum(mantissa - 1 downto 2) & (sum(1) or sum(0));
  settled <= halved when halve(0) = '1' else sum(mantissa - 2 downto 0);
  result_sign <= carry_marks(3) when marked = '1' else sum(mantissa);
  result_d <= result_sign & settled;
  result_exponent_d <= std_logic_vector(unsigned(carry_exponent) + halve);
  -- Read from the sum that is there anyway, or, where there is no register behind carry, on a shorter path.
  registered_sum : if carry_border = 1 generate
    lowest_comes <= result_exponent_d(exponent_bits - 4);
  end generate;
  direct_sum : if carry_border = 0 generate
    lowest_comes <= halve(0) when signed(carry_exponent(exponent_bits - 5 downto 0)) = -1 else '0';
  end generate;
  too_large <= near and (carry_exponent(exponent_bits - 4) or lowest_comes);
  result_flags_d <= carry_marks(2 downto 1) & (carry_marks(0) or too_large);

  settle_0 : entity work.xfc_register generic map (exponent_bits, 1)
    port map (sysclk, enable, result_exponent_d, result_exponent);
  settle_1 : entity work.xfc_register generic map (mantissa, 1) port map (sysclk, enable, result_d, result);
  settle_2 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, result_flags_d, result_flags);

  cc <= result & result_exponent;
  ccsat <= result_flags(0);
  cczip <= result_flags(1);
  ccnan <= result_flags(2);
end rtl;
