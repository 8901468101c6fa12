-- Divides XFloat values in divider form; their hidden ones are taken for granted. At the IEEE output the quotient is
-- rounded to the nearest, to even between two (roundconvert 1), or truncated (0); what is below the smallest normal
-- number after that is zero, what is too large is infinite, nan is 7FC00000. At the internal outputs (xoutput adder
-- form, multoutput multiplier form, divoutput divider form) it has 25 bits and a 26th that is 1 where it is not exact.
-- 0 / 0 and inf / inf are nan, x / 0 and inf / x infinite, 0 / x and x / inf zero; exponent field 0 is zero.
--   step order:   which significand is larger, so that the quotient is below 2; its hidden one; the divisor times three
--   step range:   the quotient's exponent, beside the first digit
--   step digit:   a base 4 digit a cycle, eleven of them
--   step last:    the twelfth digit and whether it leaves no remainder
--   step settle:  round and pack, or append the sticky bit and complement; flags
-- Latency 13 cycles, a register behind order, each digit, and settle; with the IEEE output and roundconvert 1 there is
-- one behind last too. `synthesize` changes nothing.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divfp1x is
  generic (mantissa : positive; ieeeoutput : natural; xoutput : natural; multoutput : natural; divoutput : natural;
           roundconvert : natural; synthesize : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1);
        aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1);
        bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 - ieeeoutput * (mantissa - 22) downto 1);
        ccsat, cczip, ccnan : out std_logic);
end xfc_divfp1x;

architecture rtl of xfc_divfp1x is
  constant exponent_bits  : positive := 10;
  constant wide_bits      : positive := exponent_bits + 2;       -- exponent below zero and above the field
  constant fraction_bits  : positive := 23;
  constant ieee_exponent  : positive := 8;
  constant bias           : positive := 127;
  constant magnitude_bits : positive := mantissa - 1;
  constant digits         : positive := 12;
  constant quotient_bits  : positive := 2 * digits + 1;          -- hidden one and base 4 digits
  constant kept_bits      : positive := quotient_bits - 2;       -- before the last digit
  constant state_bits     : positive := 3 * magnitude_bits + 1 + quotient_bits;
  constant aside_bits     : positive := 4 + wide_bits;           -- marks and exponent
  constant last_border    : natural := ieeeoutput * roundconvert;

  subtype exponent_field is unsigned(exponent_bits - 1 downto 0);
  subtype wide_exponent is std_logic_vector(wide_bits - 1 downto 0);                -- two's complement
  subtype magnitude_field is unsigned(magnitude_bits - 1 downto 0);
  subtype quotient_field is std_logic_vector(quotient_bits - 1 downto 0);
  subtype kept_field is std_logic_vector(kept_bits - 1 downto 0);
  subtype mark_field is std_logic_vector(3 downto 0);                               -- sign, nan, zip, sat
  subtype state_field is std_logic_vector(state_bits - 1 downto 0);
  subtype aside_field is std_logic_vector(aside_bits - 1 downto 0);
  -- What is known in front of the first digit and behind each.
  type state_array is array (0 to digits - 1) of state_field;
  type aside_array is array (0 to digits - 1) of aside_field;
  constant hidden_one : quotient_field := (0 => '1', others => '0');

  -- order
  signal a_exponent, b_exponent : exponent_field;
  signal dividend, divisor, remainder : magnitude_field;
  signal difference, doubled_difference : unsigned(magnitude_bits downto 0);
  signal triple : unsigned(magnitude_bits + 1 downto 0);
  signal less_d, less : std_logic_vector(0 downto 0);
  signal order_d : state_field;
  signal exponents_d, exponents : std_logic_vector(exponent_bits downto 0);         -- two's complement
  signal a_zero, b_zero, nan, sat, zip, sign_d, low_is_zero : std_logic;
  signal marks_d, marks : mark_field;

  -- range
  signal quotient_exponent : wide_exponent;

  -- digit
  signal states : state_array;
  signal asides : aside_array;

  -- last
  signal before_last, last_state : state_field;
  signal last_remainder, last_divisor : magnitude_field;
  signal last_triple, last_wide : unsigned(magnitude_bits + 1 downto 0);
  signal exact_d, exact : std_logic_vector(0 downto 0);
  signal complement : kept_field;
  signal last_aside : aside_field;

  -- settle
  signal quotient : quotient_field;
  signal exponent : wide_exponent;
  signal sign, last_nan, last_zip, last_sat, below_zero, too_small : std_logic;
begin
  assert mantissa = 32 or mantissa = 36 report "xfc_divfp1x: mantissa is 32 or 36" severity failure;
  assert ieeeoutput + xoutput + multoutput + divoutput = 1 report "xfc_divfp1x: one output is 1" severity failure;
  assert roundconvert <= 1 report "xfc_divfp1x: roundconvert is 0 or 1" severity failure;
  assert synthesize <= 1 report "xfc_divfp1x: synthesize is 0 or 1" severity failure;

  -- order
  a_exponent <= unsigned(aa(exponent_bits downto 1));
  b_exponent <= unsigned(bb(exponent_bits downto 1));
  dividend <= unsigned('1' & aa(mantissa + exponent_bits - 2 downto exponent_bits + 1));
  divisor <= unsigned('1' & bb(mantissa + exponent_bits - 2 downto exponent_bits + 1));
  difference <= resize(dividend, magnitude_bits + 1) - divisor;
  doubled_difference <= (dividend & '0') - divisor;
  less_d(0) <= difference(magnitude_bits);
  remainder <= doubled_difference(magnitude_bits - 1 downto 0) when less_d(0) = '1' else
               difference(magnitude_bits - 1 downto 0);
  triple <= resize(divisor, magnitude_bits + 2) + (divisor & '0');
  low_is_zero <= '1' when divisor(1 downto 0) = 0 else '0';
  order_d <= std_logic_vector(remainder) & std_logic_vector(not divisor) &
             std_logic_vector(not triple(magnitude_bits + 1 downto 2)) & low_is_zero & hidden_one;
  exponents_d <= std_logic_vector(resize(a_exponent, exponent_bits + 1) - b_exponent);

  a_zero <= '1' when aazip = '1' or a_exponent = 0 else '0';
  b_zero <= '1' when bbzip = '1' or b_exponent = 0 else '0';
  nan <= aanan or bbnan or (aasat and bbsat) or (not aasat and not bbsat and a_zero and b_zero);
  sat <= not nan and (aasat or (b_zero and not bbsat));
  zip <= not nan and not sat and (a_zero or bbsat);
  sign_d <= aa(mantissa + exponent_bits) xor bb(mantissa + exponent_bits);
  marks_d <= sign_d & nan & zip & sat;

  order_0 : entity work.xfc_register generic map (state_bits, 1) port map (sysclk, enable, order_d, states(0));
  order_1 : entity work.xfc_register generic map (exponent_bits + 1, 1)
    port map (sysclk, enable, exponents_d, exponents);
  order_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, less_d, less);
  order_3 : entity work.xfc_register generic map (4, 1) port map (sysclk, enable, marks_d, marks);

  -- range
  quotient_exponent <= std_logic_vector(unsigned(resize(signed(exponents), wide_bits)) + bias - unsigned(less));
  asides(0) <= marks & quotient_exponent;

  -- digit: what is known in front of the first and behind each
  each : for known in 1 to digits - 1 generate
    next_digit : entity work.xfc_divide_digit generic map (magnitude_bits, quotient_bits, 1)
      port map (sysclk, enable, states(known - 1), states(known));
    digit_0 : entity work.xfc_register generic map (aside_bits, 1)
      port map (sysclk, enable, asides(known - 1), asides(known));
  end generate;

  -- last: nothing is left where four times the remainder is a multiple of the divisor
  before_last <= states(digits - 1);
  last_remainder <= unsigned(before_last(state_bits - 1 downto state_bits - magnitude_bits));
  last_divisor <= not unsigned(before_last(state_bits - magnitude_bits - 1 downto state_bits - 2 * magnitude_bits));
  last_triple <= not unsigned(before_last(quotient_bits + magnitude_bits downto quotient_bits + 1)) &
                 (last_divisor(1) xor last_divisor(0)) & last_divisor(0);
  last_wide <= last_remainder & "00";
  exact_d(0) <= '1' when last_remainder = 0 or last_wide = "00" & last_divisor or
                         last_wide = '0' & last_divisor & '0' or last_wide = last_triple else '0';
  -- The complement of the digits so far, for an exact quotient whose last digit is 0.
  complement <= std_logic_vector(unsigned(not before_last(kept_bits - 1 downto 0)) + 1);

  last : entity work.xfc_divide_digit generic map (magnitude_bits, quotient_bits, last_border)
    port map (sysclk, enable, before_last, last_state);
  last_0 : entity work.xfc_register generic map (1, last_border) port map (sysclk, enable, exact_d, exact);
  last_1 : entity work.xfc_register generic map (aside_bits, last_border)
    port map (sysclk, enable, asides(digits - 1), last_aside);

  -- settle
  quotient <= last_state(quotient_bits - 1 downto 0);
  sign <= last_aside(aside_bits - 1);
  last_nan <= last_aside(aside_bits - 2);
  last_zip <= last_aside(aside_bits - 3);
  last_sat <= last_aside(aside_bits - 4);
  exponent <= last_aside(wide_bits - 1 downto 0);
  below_zero <= exponent(wide_bits - 1);
  too_small <= '1' when signed(exponent) <= 0 else '0';

  -- Exponent field 0 may be rounded up to the smallest normal number, 254 to infinity, whose fraction is zero too.
  to_ieee : if ieeeoutput = 1 generate
    signal dropped : std_logic_vector(1 downto 0);
    signal nearest_up, too_large, all_ones, all_zeros, no_fraction : std_logic;
    signal up : std_logic_vector(0 downto 0);
    signal rounded : std_logic_vector(ieee_exponent + fraction_bits - 1 downto 0);
    signal settle_d : std_logic_vector(31 downto 0);
  begin
    dropped <= quotient(0) & not exact(0);
    round_even : entity work.xfc_round_even generic map (2) port map (quotient(1), dropped, '0', nearest_up);
    up(0) <= nearest_up when roundconvert = 1 else '0';
    too_large <= '1' when signed(exponent) >= 255 else '0';
    rounded <= std_logic_vector(unsigned(exponent(ieee_exponent - 1 downto 0)) &
                                unsigned(quotient(fraction_bits downto 1)) + unsigned(up));
    all_ones <= last_nan or last_sat or (too_large and not last_zip);
    all_zeros <= not last_nan and not last_sat and (last_zip or below_zero);
    no_fraction <= all_ones or last_zip or too_small;
    settle_d(31) <= sign and not last_nan;
    settle_d(30 downto fraction_bits) <= (others => '1') when all_ones = '1' else
                                         (others => '0') when all_zeros = '1' else
                                         rounded(ieee_exponent + fraction_bits - 1 downto fraction_bits);
    settle_d(fraction_bits - 1) <= last_nan when no_fraction = '1' else rounded(fraction_bits - 1);
    settle_d(fraction_bits - 2 downto 0) <= (others => '0') when no_fraction = '1' else
                                            rounded(fraction_bits - 2 downto 0);

    settle_0 : entity work.xfc_register generic map (32, 1) port map (sysclk, enable, settle_d, cc);
    ccsat <= '0';
    cczip <= '0';
    ccnan <= '0';
  end generate;

  internal : if ieeeoutput = 0 generate
    constant lead_bits  : positive := 1 + 4 * xoutput;              -- sign, and guard bits of the adder form
    constant value_bits : positive := quotient_bits + 1;
    constant low_bits   : positive := mantissa - lead_bits - value_bits;
    signal negative, too_large : std_logic;
    signal kept : kept_field;
    signal digit : std_logic_vector(1 downto 0);
    signal value : std_logic_vector(value_bits - 1 downto 0);
    signal settle_d, result : std_logic_vector(mantissa + exponent_bits - 1 downto 0);
    signal flags_d, flags : std_logic_vector(2 downto 0);           -- nan, zip, sat
  begin
    negative <= sign when divoutput = 0 else '0';
    kept <= quotient(quotient_bits - 1 downto 2);
    digit <= quotient(1 downto 0);
    value <= kept & digit & not exact(0) when negative = '0' else
             not kept & not digit & '1' when exact(0) = '0' else
             complement & "000" when digit = "00" else
             not kept & (digit(1) xor digit(0)) & digit(0) & '0';
    settle_d(low_bits + exponent_bits - 1 downto exponent_bits) <= (others => '0');
    settle_d(value_bits + low_bits + exponent_bits - 1 downto low_bits + exponent_bits) <= value;
    settle_d(mantissa + exponent_bits - 1 downto value_bits + low_bits + exponent_bits) <= (others => sign);
    settle_d(exponent_bits - 1 downto 0) <= exponent(exponent_bits - 1 downto 0);
    -- Exponents from 960 on have their four high bits set; they are infinite.
    too_large <= '1' when signed(exponent) >= 960 else '0';
    flags_d <= last_nan & (last_zip or (too_small and not last_nan and not last_sat)) &
               (last_sat or (too_large and not last_nan and not last_zip));

    settle_0 : entity work.xfc_register generic map (mantissa + exponent_bits, 1)
      port map (sysclk, enable, settle_d, result);
    settle_1 : entity work.xfc_register generic map (3, 1) port map (sysclk, enable, flags_d, flags);
    cc <= result;
    ccsat <= flags(0);
    cczip <= flags(1);
    ccnan <= flags(2);
  end generate;
end rtl;
