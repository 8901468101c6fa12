-- Counts the zeros in front of the highest 1; a value of zero counts all its bits. Blocks of 1, 2, 4, ... bits know
-- whether they are empty and where their highest 1 stands; two neighbours make the next.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_leading_zeros is
  generic (width  : positive;    -- bits of the value, below 2 ** levels
           levels : positive);   -- bits of the count
  port (value : in std_logic_vector(width - 1 downto 0);
        count : out std_logic_vector(levels - 1 downto 0));
end xfc_leading_zeros;

architecture rtl of xfc_leading_zeros is
  constant size : positive := 2 ** levels;
begin
  assert width < size report "xfc_leading_zeros: the count has too few bits" severity failure;

  search : process (value)
    -- What is known of a block stands at its lowest bit: empty, and bit j of the count at j * size further.
    variable empty    : std_logic_vector(size - 1 downto 0);
    variable position : std_logic_vector(levels * size - 1 downto 0);
    variable low, high : natural;
  begin
    -- A 1 behind the last bit ends the count of a value of zero.
    empty := (others => '0');
    position := (others => '0');
    for i in 0 to width - 1 loop
      empty(size - width + i) := not value(i);
    end loop;
    for level in 0 to levels - 1 loop
      for block_index in natural range 0 to 2 ** (levels - level - 1) - 1 loop
        low := block_index * 2 ** (level + 1);
        high := low + 2 ** level;
        for j in 0 to level - 1 loop
          if empty(high) = '0' then
            position(j * size + low) := position(j * size + high);
          end if;
        end loop;
        position(level * size + low) := empty(high);
        empty(low) := empty(high) and empty(low);
      end loop;
    end loop;
    for j in 0 to levels - 1 loop
      count(j) <= position(j * size);
    end loop;
  end process;
end rtl;
