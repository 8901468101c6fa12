-- Divides two integers of 32 bits as C does: the quotient toward zero, or with `remainder` what it leaves, which has
-- the dividend's sign. x / 0 is -1 for x >= 0 and else 1, x % 0 is x; -2 ** 31 / -1 wraps to -2 ** 31 and leaves 0.
--   step magnitude:  absolute values; the result's sign
--   step digit:      32 times one bit of the quotient, without restoring
--   step restore:    a negative remainder gets the divisor back
--   step sign:       the result's sign
-- Latency 35 cycles: a register behind each step.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_divlong is
  generic (remainder : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_divlong;

architecture rtl of xfc_divlong is
  constant width      : positive := 32;
  constant state_bits : positive := 3 * width + 1;

  subtype word_field is std_logic_vector(width - 1 downto 0);
  subtype state_field is std_logic_vector(state_bits - 1 downto 0);
  -- What is known in front of the first digit and behind each.
  type state_array is array (0 to width) of state_field;
  constant no_left : std_logic_vector(width downto 0) := (others => '0');

  -- magnitude
  signal a_word, b_word, dividend_d, divisor_d : word_field;
  signal first_state_d : state_field;
  signal negate_d, negate_early, negate : std_logic_vector(0 downto 0);

  -- digit
  signal states : state_array;
  signal left : std_logic_vector(width downto 0);
  signal divisor, digits_but_last : word_field;

  -- restore
  signal given_back, quotient, restored, result_d, result : word_field;
  signal negative : std_logic_vector(0 downto 0);

  -- sign
  signal turned, signed_d : word_field;
begin
  assert remainder <= 1 report "xfc_divlong: remainder is 0 or 1" severity failure;

  -- magnitude
  a_word <= not aa when aa(width) = '1' else aa;
  b_word <= not bb when bb(width) = '1' else bb;
  dividend_d <= std_logic_vector(unsigned(a_word) + unsigned(aa(width downto width)));
  divisor_d <= std_logic_vector(unsigned(b_word) + unsigned(bb(width downto width)));
  negate_d(0) <= aa(width) when remainder = 1 else aa(width) xor bb(width);
  first_state_d <= no_left & divisor_d & dividend_d;

  magnitude_0 : entity work.xfc_register generic map (state_bits, 1)
    port map (sysclk, enable, first_state_d, states(0));
  magnitude_1 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, negate_d, negate_early);

  -- digit
  digits : for known in 1 to width generate
    digit : entity work.xfc_divlong_digit generic map (width)
      port map (sysclk, enable, states(known - 1), states(known));
  end generate;
  digit_0 : entity work.xfc_registers generic map (1, width) port map (sysclk, enable, negate_early, negate);
  left <= states(width)(state_bits - 1 downto 2 * width);
  divisor <= states(width)(2 * width - 1 downto width);
  digits_but_last <= states(width)(width - 1 downto 0);

  -- restore
  given_back <= divisor when left(width) = '1' else (others => '0');
  restored <= std_logic_vector(unsigned(left(width - 1 downto 0)) + unsigned(given_back));
  quotient <= digits_but_last(width - 2 downto 0) & (not left(width));
  result_d <= restored when remainder = 1 else quotient;

  restore_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, result_d, result);
  restore_1 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, negate, negative);

  -- sign
  turned <= not result when negative(0) = '1' else result;
  signed_d <= std_logic_vector(unsigned(turned) + unsigned(negative));

  sign_0 : entity work.xfc_register generic map (width, 1) port map (sysclk, enable, signed_d, cc);
end rtl;
