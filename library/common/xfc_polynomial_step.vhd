-- A step of a polynomial whose coefficients alternate in sign: `coefficient` less `value` times the position, which is
-- below 1. The product is truncated to the coefficient's units; no difference is negative.
--   step multiply:  value times position
--   step subtract:  the coefficient less that
-- The position comes a cycle before value and coefficient, for its triple. Behind these it takes a cycle for each bit
-- of `borders`, told at xfc_unsigned_product, and one more.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_polynomial_step is
  generic (position_bits    : positive;   -- all behind the point
           value_bits       : positive;   -- at most 64
           coefficient_bits : positive;   -- at least value_bits
           borders : natural;
           blocks  : natural);
  port (sysclk, enable : in std_logic;
        early_position : in std_logic_vector(position_bits - 1 downto 0);
        value          : in std_logic_vector(value_bits - 1 downto 0);
        coefficient    : in std_logic_vector(coefficient_bits - 1 downto 0);
        difference     : out std_logic_vector(coefficient_bits - 1 downto 0));
end xfc_polynomial_step;

architecture rtl of xfc_polynomial_step is
  constant cycles : natural := borders mod 2 + borders / 2 mod 2 + borders / 4 mod 2 + borders / 8 mod 2 +
                               borders / 16 mod 2 + borders / 32 mod 2;

  -- multiply
  signal triple_d, triple : std_logic_vector(position_bits + 1 downto 0);
  signal position : std_logic_vector(position_bits - 1 downto 0);
  signal product : std_logic_vector(position_bits + value_bits - 1 downto 0);
  signal subtract_coefficient : std_logic_vector(coefficient_bits - 1 downto 0);

  -- subtract
  signal difference_d : std_logic_vector(coefficient_bits - 1 downto 0);
begin
  -- multiply
  triple_d <= std_logic_vector(resize(unsigned(early_position), position_bits + 2) + unsigned(early_position & '0'));
  multiply_0 : entity work.xfc_register generic map (position_bits, 1)
    port map (sysclk, enable, early_position, position);
  multiply_1 : entity work.xfc_register generic map (position_bits + 2, 1) port map (sysclk, enable, triple_d, triple);

  multiply : entity work.xfc_unsigned_product generic map (position_bits, value_bits, borders, blocks)
    port map (sysclk, enable, position, triple, value, product);
  multiply_2 : entity work.xfc_registers generic map (coefficient_bits, cycles)
    port map (sysclk, enable, coefficient, subtract_coefficient);

  -- subtract
  difference_d <= std_logic_vector(unsigned(subtract_coefficient)
                                   - unsigned(product(position_bits + value_bits - 1 downto position_bits)));

  subtract_0 : entity work.xfc_register generic map (coefficient_bits, 1)
    port map (sysclk, enable, difference_d, difference);
end rtl;
