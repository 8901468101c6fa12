-- One digit of a quotient whose divisor b is near 1. What is left of the dividend comes as `remainder`, 61 bits behind
-- the point (as b has them); the digit is the integer nearest to it 2 ** shift times. Behind the digit
-- remainder * 2 ** shift - digit * b is left, in magnitude below 1. `codes` are what xfc_product_rows multiplies by to
-- subtract: the digits of minus the digit, xfc_divfp2x_codes makes them.
--   step rows:  digit times b, subtracted; the quotient's next digit
--   step rest:  what is left; its codes
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divfp2x_digit is
  generic (shift       : positive;
           rows_border : natural;                            -- 1: a register behind the step
           rest_border : natural);
  port (sysclk, enable : in std_logic;
        b         : in std_logic_vector(61 downto 0);
        remainder : in std_logic_vector(63 downto 0);        -- two's complement
        codes     : in std_logic_vector(8 downto 0);
        quotient  : in std_logic_vector(54 downto 0);
        next_b         : out std_logic_vector(61 downto 0);
        next_remainder : out std_logic_vector(63 downto 0);
        next_codes     : out std_logic_vector(8 downto 0);
        next_quotient  : out std_logic_vector(54 downto 0));
end xfc_divfp2x_digit;

architecture rtl of xfc_divfp2x_digit is
  constant point         : positive := 61;
  constant divisor_bits  : positive := point + 1;
  constant digit_bits    : positive := 8;
  constant rows_bits     : positive := divisor_bits + 1 + digit_bits;
  constant quotient_bits : positive := 55;
  constant low_bits      : positive := point + 1 - shift;    -- of the remainder, below the digit
  constant no_first      : std_logic_vector(divisor_bits + 1 downto 0) := (others => '0');
  constant zeros         : std_logic_vector(shift - 1 downto 0) := (others => '0');

  subtype divisor_field is std_logic_vector(divisor_bits - 1 downto 0);
  subtype quotient_field is std_logic_vector(quotient_bits - 1 downto 0);

  -- rows
  signal extended : std_logic_vector(divisor_bits downto 0);
  signal rows_d : std_logic_vector(rows_bits - 1 downto 0);
  signal short_d, short : std_logic_vector(0 downto 0);
  signal digit_and_half : std_logic_vector(digit_bits downto 0);
  signal moved_quotient, quotient_sum : std_logic_vector(quotient_bits downto 0);
  signal rows, rows_b : divisor_field;
  signal low : std_logic_vector(low_bits - 1 downto 0);
  signal rows_quotient : quotient_field;

  -- rest
  signal augend, rest : divisor_field;
  signal remainder_d : std_logic_vector(63 downto 0);
  signal codes_d : std_logic_vector(digit_bits downto 0);
begin
  -- rows
  extended <= '0' & b;
  subtract : entity work.xfc_product_rows generic map (divisor_bits + 1, 4)
    port map (sysclk, enable, extended, no_first, '0', codes(digit_bits - 1 downto 0), codes(digit_bits), rows_d,
              short_d(0));
  digit_and_half <= remainder(point - shift + digit_bits - 1 downto point - shift - 1);
  moved_quotient <= quotient(quotient_bits - shift - 1 downto 0) & zeros & '1';   -- a bit below carries the rounding in
  quotient_sum <= std_logic_vector(signed(moved_quotient) + resize(signed(digit_and_half), quotient_bits + 1));

  rows_0 : entity work.xfc_register generic map (divisor_bits, rows_border)
    port map (sysclk, enable, rows_d(divisor_bits - 1 downto 0), rows);
  rows_1 : entity work.xfc_register generic map (1, rows_border) port map (sysclk, enable, short_d, short);
  rows_2 : entity work.xfc_register generic map (divisor_bits, rows_border) port map (sysclk, enable, b, rows_b);
  rows_3 : entity work.xfc_register generic map (low_bits, rows_border)
    port map (sysclk, enable, remainder(low_bits - 1 downto 0), low);
  rows_4 : entity work.xfc_register generic map (quotient_bits, rows_border)
    port map (sysclk, enable, quotient_sum(quotient_bits downto 1), rows_quotient);

  -- rest: its sign is the highest of so many bits
  augend <= low & zeros(shift - 2 downto 0) & short;
  rest <= std_logic_vector(unsigned(augend) + unsigned(rows));
  remainder_d <= std_logic_vector(resize(signed(rest), 64));
  next_digit : entity work.xfc_divfp2x_codes
    port map (rest(point), rest(point downto point - 7), rest(point - 8), codes_d);

  rest_0 : entity work.xfc_register generic map (divisor_bits, rest_border) port map (sysclk, enable, rows_b, next_b);
  rest_1 : entity work.xfc_register generic map (64, rest_border)
    port map (sysclk, enable, remainder_d, next_remainder);
  rest_2 : entity work.xfc_register generic map (digit_bits + 1, rest_border)
    port map (sysclk, enable, codes_d, next_codes);
  rest_3 : entity work.xfc_register generic map (quotient_bits, rest_border)
    port map (sysclk, enable, rows_quotient, next_quotient);
end rtl;
