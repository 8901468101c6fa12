-- The end of a Newton step for a fraction behind the point: a guess, more by its product with its relative error,
-- rounded to `kept_bits`: half a unit of these is added, and the lower bits are dropped.
--   step correct:  guess times error
--   step add:      both, and half a unit, which stands where the guess has no bits
-- The guess comes a cycle before the error. Behind that it takes a cycle for each bit of `borders`, told at
-- xfc_unsigned_product, and one more.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_newton_add is
  generic (guess_bits : positive;   -- behind the point
           error_bits : positive;   -- at most 64
           rise_bits  : positive;   -- of guess times error, that are kept
           sum_bits   : positive;   -- behind the point
           kept_bits  : positive;   -- of the sum
           borders : natural;
           blocks  : natural);
  port (sysclk, enable : in std_logic;
        early_guess : in std_logic_vector(guess_bits - 1 downto 0);
        error   : in std_logic_vector(error_bits - 1 downto 0);
        rounded : out std_logic_vector(kept_bits downto 0));   -- one bit before the point
end xfc_newton_add;

architecture rtl of xfc_newton_add is
  constant cycles : natural := borders mod 2 + borders / 2 mod 2 + borders / 4 mod 2 + borders / 8 mod 2 +
                               borders / 16 mod 2 + borders / 32 mod 2;
  constant dropped_bits : positive := sum_bits - kept_bits;

  -- correct
  signal rise : std_logic_vector(guess_bits + error_bits - 1 downto 0);
  signal guess : std_logic_vector(guess_bits - 1 downto 0);

  -- add
  signal augend, sum_d : unsigned(sum_bits downto 0);
begin
  -- correct
  correct : entity work.xfc_early_product generic map (guess_bits, error_bits, borders, blocks)
    port map (sysclk, enable, early_guess, error, rise);

  correct_0 : entity work.xfc_registers generic map (guess_bits, cycles + 1)
    port map (sysclk, enable, early_guess, guess);

  -- add
  augend(sum_bits) <= '0';
  augend(sum_bits - 1 downto sum_bits - guess_bits) <= unsigned(guess);
  augend(sum_bits - guess_bits - 1 downto dropped_bits) <= (others => '0');
  augend(dropped_bits - 1) <= '1';
  augend(dropped_bits - 2 downto 0) <= (others => '0');
  sum_d <= augend + unsigned(rise(guess_bits + error_bits - 1 downto guess_bits + error_bits - rise_bits));

  add_0 : entity work.xfc_register generic map (kept_bits + 1, 1)
    port map (sysclk, enable, std_logic_vector(sum_d(sum_bits downto dropped_bits)), rounded);
end rtl;
