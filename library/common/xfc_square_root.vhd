-- Square root of an IEEE number, digit by digit, rounded to nearest; no root is halfway between two numbers. Subnormal
-- numbers are zero, the root of -0 is -0, that of any other negative number is nan.
--   step unpack:  what is special; the result's exponent, half the operand's
--   step first:   the operand moved by a place when its exponent is odd; the root's highest digit is 1
--   step digit:   a digit a cycle, down to the one behind the fraction
--   step round:   one carry chain; the root is too far below 2 to reach it
--   step pack:    fraction of a special result
-- Latency fraction_bits + 5 cycles, a register behind every step and digit.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_square_root is
  generic (exponent_bits : positive;
           fraction_bits : positive);
  port (sysclk, enable, sign : in std_logic;
        exponent : in std_logic_vector(exponent_bits - 1 downto 0);
        fraction : in std_logic_vector(fraction_bits - 1 downto 0);
        root : out std_logic_vector(exponent_bits + fraction_bits downto 0));
end xfc_square_root;

architecture rtl of xfc_square_root is
  constant digits     : positive := fraction_bits + 2;           -- hidden one, fraction, one to round
  constant state_bits : positive := 2 * digits + 1;
  constant aside_bits : positive := exponent_bits + 3;           -- sign, nan, special, exponent of the result
  constant half_bias  : positive := 2 ** (exponent_bits - 2) - 1;   -- without the one that an odd exponent adds

  subtype exponent_field is std_logic_vector(exponent_bits - 1 downto 0);
  subtype fraction_field is std_logic_vector(fraction_bits - 1 downto 0);
  subtype state_field is std_logic_vector(state_bits - 1 downto 0);
  subtype aside_field is std_logic_vector(aside_bits - 1 downto 0);
  -- What is known behind the step first and each digit.
  type state_array is array (0 to digits - 1) of state_field;
  type aside_array is array (0 to digits - 1) of aside_field;
  constant all_ones    : exponent_field := (others => '1');
  constant no_fraction : fraction_field := (others => '0');

  -- unpack
  signal zero, infinite_or_nan, nan, special : std_logic;
  signal half, root_exponent : exponent_field;
  signal aside_d, unpack_aside : aside_field;
  signal unpacked : fraction_field;
  signal one_place_d, one_place : std_logic_vector(0 downto 0);

  -- first
  signal top : std_logic;
  signal first_d : state_field;

  -- digit
  signal states : state_array;
  signal asides : aside_array;

  -- round
  signal digits_found : std_logic_vector(digits - 1 downto 0);
  signal rounded_d, rounded : fraction_field;
  signal round_aside : aside_field;

  -- pack
  signal round_special : std_logic;
  signal packed_d : std_logic_vector(exponent_bits + fraction_bits downto 0);
begin
  -- unpack
  zero <= '1' when unsigned(exponent) = 0 else '0';
  infinite_or_nan <= '1' when exponent = all_ones else '0';
  nan <= '1' when (infinite_or_nan = '1' and fraction /= no_fraction) or (sign = '1' and zero = '0') else '0';
  special <= zero or infinite_or_nan or nan;
  half <= std_logic_vector(resize(unsigned(exponent(exponent_bits - 1 downto 1)), exponent_bits) + half_bias +
                           unsigned(exponent(0 downto 0)));
  root_exponent <= (others => '1') when (nan or infinite_or_nan) = '1' else
                   (others => '0') when zero = '1' else half;
  aside_d <= (sign and not nan) & nan & special & root_exponent;
  one_place_d <= not exponent(0 downto 0);

  unpack_0 : entity work.xfc_register generic map (aside_bits, 1)
    port map (sysclk, enable, aside_d, unpack_aside);
  unpack_1 : entity work.xfc_register generic map (fraction_bits, 1) port map (sysclk, enable, fraction, unpacked);
  unpack_2 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, one_place_d, one_place);

  -- first: the pair of bits before the point is 1, 2 or 3; the highest digit takes 1 off
  top <= unpacked(fraction_bits - 1);
  first_d(fraction_bits + 2 downto 0) <= (others => '0');
  first_d(state_bits - 1 downto fraction_bits + 3) <=
    top & not top & unpacked(fraction_bits - 2 downto 0) & '0' when one_place(0) = '1' else "00" & unpacked;

  first_0 : entity work.xfc_register generic map (state_bits, 1) port map (sysclk, enable, first_d, states(0));
  first_1 : entity work.xfc_register generic map (aside_bits, 1)
    port map (sysclk, enable, unpack_aside, asides(0));

  -- digit
  each : for known in 1 to digits - 1 generate
    next_digit : entity work.xfc_root_digit generic map (digits, known, 1)
      port map (sysclk, enable, states(known - 1), states(known));
    digit_0 : entity work.xfc_register generic map (aside_bits, 1)
      port map (sysclk, enable, asides(known - 1), asides(known));
  end generate;

  -- round
  digits_found <= not states(digits - 1)(digits - 1 downto 0);
  rounded_d <= std_logic_vector(unsigned(digits_found(fraction_bits downto 1)) + unsigned(digits_found(0 downto 0)));

  round_0 : entity work.xfc_register generic map (fraction_bits, 1) port map (sysclk, enable, rounded_d, rounded);
  round_1 : entity work.xfc_register generic map (aside_bits, 1)
    port map (sysclk, enable, asides(digits - 1), round_aside);

  -- pack
  round_special <= round_aside(exponent_bits);
  packed_d(exponent_bits + fraction_bits) <= round_aside(aside_bits - 1);
  packed_d(exponent_bits + fraction_bits - 1 downto fraction_bits) <= round_aside(exponent_bits - 1 downto 0);
  packed_d(fraction_bits - 1) <= round_aside(exponent_bits + 1) when round_special = '1' else
                                 rounded(fraction_bits - 1);
  packed_d(fraction_bits - 2 downto 0) <= (others => '0') when round_special = '1' else
                                          rounded(fraction_bits - 2 downto 0);

  pack_0 : entity work.xfc_register generic map (1 + exponent_bits + fraction_bits, 1)
    port map (sysclk, enable, packed_d, root);
end rtl;
